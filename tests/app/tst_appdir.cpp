#include "testsupport.h"

#include "appdir.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

Q_DECLARE_METATYPE(AppDir::Layout)

// Where the files live: beside the program in a portable install, in the
// user's data folder in an installed one, where a package's starter base is
// copied on the first start.
class tst_AppDir : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        root = std::make_unique<QTemporaryDir>();
        QVERIFY(root->isValid());
        QVERIFY(QDir(root->path()).mkpath(QStringLiteral("usr/bin")));
        QVERIFY(QDir(root->path()).mkpath(QStringLiteral("usr/share/quillard")));
        setProgramDir(root->filePath(QStringLiteral("usr/bin")));
    }

    void cleanup()
    {
        AppDir::use(AppDir::Layout::Portable);
        setProgramDir(QString());
    }

    void layoutOfTheProgramFolder_data()
    {
        QTest::addColumn<QString>("besideProgram");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<AppDir::Layout>("layout");

        QTest::newRow("the build tree with its demo base") << "base" << false << AppDir::Layout::Portable;
        QTest::newRow("a package under /usr: no base beside the program") << "" << false << AppDir::Layout::Installed;
        QTest::newRow("a base the user may not write") << "base" << true << AppDir::Layout::Installed;
        QTest::newRow("a folder named like the base") << "folder" << false << AppDir::Layout::Installed;
    }

    void layoutOfTheProgramFolder()
    {
        QFETCH(QString, besideProgram);
        QFETCH(bool, readOnly);
        const QString base = QDir(programDir()).filePath(AppDir::drugDatabaseName);
        if (besideProgram == QLatin1String("base"))
            QVERIFY(TestSupport::buildDatabase(base, QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT);\n")));
        if (besideProgram == QLatin1String("folder"))
            QVERIFY(QDir().mkpath(base));
        if (readOnly) {
#ifndef Q_OS_WIN
            if (geteuid() == 0)
                QSKIP("root may write any file");
#endif
            QVERIFY(QFile::setPermissions(base, QFileDevice::ReadOwner | QFileDevice::ReadGroup));
        }
        QTEST(AppDir::layoutOf(programDir()), "layout");
    }

    void everyFileInItsLayoutsFolder_data()
    {
        QTest::addColumn<AppDir::Layout>("layout");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("folder");

        const QStringList files{QStringLiteral("database"), QStringLiteral("statistics"), QStringLiteral("temp"),
                                QStringLiteral("cache"), QStringLiteral("archive"), QStringLiteral("installer")};
        for (const QString& file : files) {
            QTest::addRow("portable: %s", qPrintable(file)) << AppDir::Layout::Portable << file << "usr/bin";
            QTest::addRow("installed: %s", qPrintable(file)) << AppDir::Layout::Installed << file << "home/data";
        }
        // The log of a portable program stays in the current directory, as it always was.
        QTest::newRow("portable: log") << AppDir::Layout::Portable << "log" << "";
        QTest::newRow("installed: log") << AppDir::Layout::Installed << "log" << "home/data";
    }

    void everyFileInItsLayoutsFolder()
    {
        QFETCH(AppDir::Layout, layout);
        QFETCH(QString, path);
        QFETCH(QString, folder);
        AppDir::use(layout, root->filePath(QStringLiteral("home/data")));

        const QHash<QString, QString> paths{
            {QStringLiteral("database"), AppDir::databasePath()},
            {QStringLiteral("statistics"), AppDir::statisticsPath()},
            {QStringLiteral("temp"), AppDir::tempDir()},
            {QStringLiteral("cache"), AppDir::cacheDir()},
            {QStringLiteral("archive"), AppDir::archivePath()},
            {QStringLiteral("installer"), AppDir::installerPath(QStringLiteral("setup.exe"))},
            {QStringLiteral("log"), AppDir::logPath()},
        };
        const QFileInfo file(paths.value(path));
        if (folder.isEmpty()) {
            QVERIFY2(file.isRelative(), qPrintable(file.filePath()));
            return;
        }
        // temp/ and cache/ are folders of their own inside it.
        const bool isFolder = path == QLatin1String("temp") || path == QLatin1String("cache");
        QCOMPARE(QDir::cleanPath(file.absolutePath()),
                 QDir::cleanPath(root->filePath(folder) + (isFolder ? QLatin1Char('/') + path : QString())));
    }

    void starterBaseOnTheFirstStart_data()
    {
        QTest::addColumn<AppDir::Layout>("layout");
        QTest::addColumn<QByteArray>("starter");
        QTest::addColumn<QByteArray>("users");
        QTest::addColumn<QByteArray>("after");

        QTest::newRow("first start of a package copies its base") << AppDir::Layout::Installed << QByteArray("starter")
                                                                  << QByteArray() << QByteArray("starter");
        QTest::newRow("an updated base of the user's is kept") << AppDir::Layout::Installed << QByteArray("starter")
                                                               << QByteArray("updated") << QByteArray("updated");
        QTest::newRow("a package without a base leaves the user none") << AppDir::Layout::Installed << QByteArray()
                                                                       << QByteArray() << QByteArray();
        QTest::newRow("a portable program copies nothing") << AppDir::Layout::Portable << QByteArray("starter")
                                                           << QByteArray() << QByteArray();
    }

    void starterBaseOnTheFirstStart()
    {
        QFETCH(AppDir::Layout, layout);
        QFETCH(QByteArray, starter);
        QFETCH(QByteArray, users);
        QFETCH(QByteArray, after);
        const QString data = root->filePath(QStringLiteral("home/data"));
        QVERIFY(QDir().mkpath(data));
        AppDir::use(layout, data);
        if (!starter.isEmpty()) {
            QVERIFY(writeFile(AppDir::starterDatabasePath(), starter));
            // Package files are installed read-only for the user.
            QVERIFY(QFile::setPermissions(AppDir::starterDatabasePath(), QFileDevice::ReadOwner));
        }
        if (!users.isEmpty())
            QVERIFY(writeFile(AppDir::databasePath(), users));

        QCOMPARE(AppDir::provideStarterDatabase(), !after.isEmpty());
        QFile base(AppDir::databasePath());
        QCOMPARE(base.open(QIODevice::ReadOnly) ? base.readAll() : QByteArray(), after);
        if (!after.isEmpty()) {
            // Updates replace the user's copy, so it must be the user's to write.
            QVERIFY(QFileInfo(base).permissions() & QFileDevice::WriteOwner);
        }
        QCOMPARE(QDir(data).entryList(QDir::Files | QDir::Hidden),
                 after.isEmpty() || layout == AppDir::Layout::Portable ? QStringList()
                                                                       : QStringList{AppDir::drugDatabaseName});
    }

    void starterBaseIsFoundFromTheProgramsBin()
    {
        QCOMPARE(AppDir::starterDatabasePath(),
                 root->filePath(QStringLiteral("usr/share/quillard/")) + AppDir::drugDatabaseName);
    }

private:
    static bool writeFile(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    std::unique_ptr<QTemporaryDir> root;
};

QTEST_GUILESS_MAIN(tst_AppDir)
#include "tst_appdir.moc"
