#include "simulator.h"

#include "appdir.h"
#include "buildconfig.h"
#include "update/programupdater.h"
#include "versionnumber.h"

#include <QDirIterator>
#include <QJsonObject>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>

class tst_ProgramUpdater : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        qRegisterMetaType<QNetworkReply*>();
        QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    }

    void init()
    {
        QVERIFY(simulator.reset());
        // The program's folder is a folder inside the temporary one, so that a
        // write above it would be seen.
        root = std::make_unique<QTemporaryDir>();
        QVERIFY(root->isValid());
        QVERIFY(QDir(root->path()).mkpath(QStringLiteral("app/sub")));
        setProgramDir(root->filePath(QStringLiteral("app")));
    }

    void versionCompare_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("greaterOrEqual");

        QTest::newRow("missing part reads as zero") << "1.6.5.0" << "1.6.5" << true;
        QTest::newRow("missing part reads as zero, other way") << "1.6.5" << "1.6.5.0" << true;
        QTest::newRow("numbers, not text: 10 after 9") << "1.10" << "1.9.9.9" << true;
        QTest::newRow("text is zeros") << "0.0.0.0" << "abc" << true;
        QTest::newRow("empty part is zero") << "1.0.5" << "1..5" << true;
        QTest::newRow("empty part is zero, other way") << "1..5" << "1.0.5" << true;
        QTest::newRow("negative part is zero") << "0.0.0.0" << "-1" << true;
        QTest::newRow("number past 32 bits is zero") << "0.0.0.0" << "4294967296" << true;
        QTest::newRow("largest 32-bit number") << "4294967294" << "4294967295" << false;
    }

    void versionCompare()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QTEST(VersionNumber(a) >= VersionNumber(b), "greaterOrEqual");
    }

    void newerVersionIsOffered()
    {
        QVERIFY(simulator.setValue(QStringLiteral("app_version"), QStringLiteral("1.6.5.1")));
        ProgramUpdater updater;
        QSignalSpy old(&updater, &ProgramUpdater::oldVersion);
        updater.checkVersion();
        QTRY_COMPARE(old.count(), 1);
        QCOMPARE(old.first(), QVariantList({ QStringLiteral("1.6.5.0"), QStringLiteral("1.6.5.1") }));
    }

    void refusedInstallerWritesNothing_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("asked");

        // An empty list is the service's own, which names the installer `name`.
        QTest::newRow("name at [1][0][1][1][1]")
            << R"([0,[[0,[0,[0,"a.exe"]]]]])" << "" << "file" << "" << "a.exe";
        QTest::newRow("rest of the list is not read")
            << R"(["9.9",[[7,["x",[8,"b.exe",9]]],1],{"c":2}])" << "" << "file" << "" << "b.exe";
        QTest::newRow("last step missing") << R"([0,[[0,[0,[0]]]]])" << "" << "file" << "" << "";
        QTest::newRow("list not JSON") << "{not json" << "" << "file" << "" << "";
        QTest::newRow("empty body") << "" << "setup.sh" << "empty" << "" << "setup.sh";
        QTest::newRow("name climbs out of the folder") << "" << "../setup.sh" << "file" << "" << "../setup.sh";
        QTest::newRow("name with a back-slash") << "" << "..\\setup.sh" << "file" << "" << "..\\setup.sh";
        QTest::newRow("failed download's error page") << "" << "setup.sh" << "file" << "404" << "setup.sh";
        // Windows reads a back-slash as a folder step even without "..".
        QTest::newRow("back-slash alone") << "" << "a\\b.exe" << "file" << "" << "a\\b.exe";
        QTest::newRow("drive path") << "" << "C:\\x.exe" << "file" << "" << "C:\\x.exe";
        // The program's own files beside it, Windows ignoring the case.
        QTest::newRow("the drug database") << "" << "corvane_quillard_desktop.sqlite3" << "file" << ""
                                           << "corvane_quillard_desktop.sqlite3";
        QTest::newRow("the statistics store, other case") << "" << "Statistics.SQLite3" << "file" << ""
                                                          << "Statistics.SQLite3";
        QTest::newRow("the log") << "" << "log.log" << "file" << "" << "log.log";
        QTest::newRow("the program itself") << "" << ownExecutable << "file" << "" << ownExecutable;
    }

    void refusedInstallerWritesNothing()
    {
        if (!ProgramUpdater::isSelfUpdating())
            QSKIP("a package build fetches no installer");
        QFETCH(QString, list);
        QFETCH(QString, name);
        QFETCH(QString, body);
        QFETCH(QString, fault);
        QFETCH(QString, asked);
        name.replace(ownExecutable, QFileInfo(QCoreApplication::applicationFilePath()).fileName());
        asked.replace(ownExecutable, QFileInfo(QCoreApplication::applicationFilePath()).fileName());
        QVERIFY(simulator.setValue(QStringLiteral("app_list"), list));
        QVERIFY(simulator.setValue(QStringLiteral("installer_name"), name));
        QVERIFY(simulator.setValue(QStringLiteral("installer_body"), body));
        QVERIFY(
            simulator.setValue(QStringLiteral("installer_marker"), root->filePath(QStringLiteral("started"))));
        if (!fault.isEmpty())
            QVERIFY(simulator.setFault(fileKey, fault));

        ProgramUpdater updater;
        QSignalSpy error(&updater, &ProgramUpdater::error);
        updater.downloadUpdate();
        QTRY_COMPARE(error.count(), 1);
        const QJsonArray requests = simulator.records(fileKey);
        QCOMPARE(requests.size(), 1);
        QCOMPARE(QUrl::fromPercentEncoding(
                     requests.first().toObject().value(QStringLiteral("query")).toString().toUtf8()),
            QStringLiteral("a=file&f=") + asked);
        QDirIterator written(root->path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        QVERIFY2(!written.hasNext(), qPrintable(written.next()));
    }

    void trustedSource_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("trusted");

        QTest::newRow("https anywhere") << "https://api.example.pl/app_version.php?a=file&f=a.exe" << true;
        QTest::newRow("http from 127.0.0.1") << "http://127.0.0.1:8080/a.exe" << true;
        QTest::newRow("http from ::1") << "http://[::1]:8080/a.exe" << true;
        QTest::newRow("http from localhost") << "http://LocalHost/a.exe" << true;
        QTest::newRow("http from the network") << "http://api.example.pl/a.exe" << false;
        QTest::newRow("host that only starts like loopback") << "http://127.0.0.1.example.pl/a.exe" << false;
        QTest::newRow("other scheme on this computer") << "ftp://127.0.0.1/a.exe" << false;
        QTest::newRow("http from another loopback address") << "http://127.0.0.2/a.exe" << true;
        QTest::newRow("http from [::1] without a port") << "http://[::1]/a.exe" << true;
        QTest::newRow("http from a private address") << "http://10.0.0.1/a.exe" << false;
        QTest::newRow("http from an IPv6 address of the network") << "http://[2001:db8::1]/a.exe" << false;
        // A name with a trailing dot goes to the resolver, not to the hosts file's entry.
        QTest::newRow("localhost with a trailing dot") << "http://localhost./a.exe" << false;
        QTest::newRow("host that only starts like localhost") << "http://localhost.example.com/a.exe" << false;
    }

    void trustedSource()
    {
        QFETCH(QString, url);
        QTEST(ProgramUpdater::isTrustedSource(QUrl(url)), "trusted");
    }

    void installerIsStartedAndProgramQuits()
    {
        if (!ProgramUpdater::isSelfUpdating())
            QSKIP("a package build fetches no installer");
        const QString marker = root->filePath(QStringLiteral("started"));
        QVERIFY(simulator.setValue(QStringLiteral("installer_name"), QStringLiteral("setup.sh")));
        QVERIFY(simulator.setValue(QStringLiteral("installer_marker"), marker));

        ProgramUpdater updater;
        QSignalSpy error(&updater, &ProgramUpdater::error);
        updater.downloadUpdate();
        // Quitting ends the event loop with 0; the watchdog would end it with 3.
        QTimer::singleShot(20000, &updater, [] { QCoreApplication::exit(3); });
        QCOMPARE(QCoreApplication::exec(), 0);

        QCOMPARE(error.count(), 0);
        const auto markerText = [&marker] {
            QFile file(marker);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        QTRY_COMPARE_WITH_TIMEOUT(markerText(), QByteArray("started\n"), 10000);
    }

private:
    // Stands for the test's own executable name in the tables.
    const QString ownExecutable = QStringLiteral("<own executable>");
    const QString fileKey = QStringLiteral("/desktop/app_version.php?a=file");
    Simulator simulator;
    std::unique_ptr<QTemporaryDir> root;
};

QTEST_GUILESS_MAIN(tst_ProgramUpdater)
#include "tst_programupdater.moc"
