#include "db/drugdatabase.h"
#include "update/unzip.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>


class TestUnzip : public QObject {
    Q_OBJECT

private slots:
    void unzipDatabase_data();
    void unzipDatabase();
};

namespace {

const QString databaseName = DrugDatabase::drugDatabaseName;

QByteArray contentOf(const QString& name)
{
    return QByteArray(QByteArrayLiteral("SQLite format 3 ") + name.toUtf8()).repeated(200);
}

// Deflated zeros that really inflate past the limit: 1 GiB and one byte from a file of 1 MB.
const QString bombScript = QStringLiteral(
    "import sys, zipfile\n"
    "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED, compresslevel=1) as archive:\n"
    "    with archive.open(sys.argv[2], 'w') as member:\n"
    "        for _ in range(1024): member.write(bytes(1 << 20))\n"
    "        member.write(b'\\0')\n");

// Members stored as they are, so that a test can find and spoil their bytes.
const QString zipScript = QStringLiteral(
    "import sys, zipfile\n"
    "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_STORED) as archive:\n"
    "    for name in sys.argv[2:]: archive.writestr(name, (b'SQLite format 3 ' + name.encode()) * 200)\n");

bool runPython(const QString& script, const QStringList& arguments)
{
    QProcess python;
    python.start(QStringLiteral("python3"), QStringList{QStringLiteral("-c"), script} + arguments);
    return python.waitForFinished(120000) && python.exitStatus() == QProcess::NormalExit
        && python.exitCode() == 0;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

} // namespace

void TestUnzip::unzipDatabase_data()
{
    QTest::addColumn<QStringList>("members");
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("found");

    const QString otherCase = QStringLiteral("CORVANE_Quillard_Desktop.SQLITE3");
    QTest::newRow("name in other case") << QStringList{otherCase} << "" << otherCase;
    QTest::newRow("among other members")
        << QStringList{"readme.txt", databaseName, databaseName + ".bak"} << "" << databaseName;

    QTest::newRow("not a zip") << QStringList() << "notzip" << "";
    QTest::newRow("no member") << QStringList{"other.sqlite3"} << "" << "";
    QTest::newRow("member in a folder") << QStringList{"x/" + databaseName} << "" << "";
    QTest::newRow("CRC mismatch") << QStringList{databaseName} << "crc" << "";
    QTest::newRow("zip bomb over 1 GiB") << QStringList() << "bomb" << "";
}

void TestUnzip::unzipDatabase()
{
    QFETCH(QStringList, members);
    QFETCH(QString, damage);
    QFETCH(QString, found);

    QTemporaryDir dir;
    // Every archive lies in a folder with Polish letters, as a pharmacist's profile folder may.
    const QString folderPath = dir.filePath(QStringLiteral("Łódź – bazy żółć"));
    QVERIFY(QDir().mkpath(folderPath));
    const QString archive = folderPath + QStringLiteral("/baza.zip");
    const QString output = dir.filePath(QStringLiteral("unpacked.sqlite3"));
    // A leftover of an earlier run, longer than any member: replaced or removed.
    QVERIFY(writeFile(output, QByteArray(100000, 'x')));

    if (damage == QLatin1String("notzip"))
        QVERIFY(writeFile(archive, "To nie jest archiwum."));
    else if (damage == QLatin1String("bomb"))
        QVERIFY(runPython(bombScript, {archive, databaseName}));
    else
        QVERIFY(runPython(zipScript, QStringList{archive} + members));
    if (damage == QLatin1String("crc")) {
        QByteArray bytes = readFile(archive);
        const QByteArray content = contentOf(members.first());
        const int at = bytes.indexOf(content);
        QVERIFY(at > 0);
        bytes[at + content.size() / 2] = '#';
        QVERIFY(writeFile(archive, bytes));
    }

    const bool unpacked = ::unzipDatabase(archive, output);
    QCOMPARE(unpacked, !found.isEmpty());
    if (unpacked)
        QCOMPARE(readFile(output), contentOf(found));
    else
        QVERIFY(!QFile::exists(output));
}

QTEST_GUILESS_MAIN(TestUnzip)
#include "tst_unzip.moc"
