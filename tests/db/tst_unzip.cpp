#include "db/drugdatabase.h"
#include "db/unzip.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <zip.h>

#include <vector>

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
bool writeBomb(const QString& path)
{
    const QString script = QStringLiteral(
        "import sys, zipfile\n"
        "with zipfile.ZipFile(sys.argv[1], 'w', zipfile.ZIP_DEFLATED, compresslevel=1) as archive:\n"
        "    with archive.open(sys.argv[2], 'w') as member:\n"
        "        for _ in range(1024): member.write(bytes(1 << 20))\n"
        "        member.write(b'\\0')\n");
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), script, path, databaseName});
    return python.waitForFinished(120000) && python.exitStatus() == QProcess::NormalExit
        && python.exitCode() == 0;
}

// Members stored as they are, so that a test can find and spoil their bytes.
bool writeZip(const QString& path, const QStringList& names, bool emptyMembers)
{
    int openError = 0;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &openError);
    if (!archive)
        return false;
    std::vector<QByteArray> contents;
    contents.reserve(size_t(names.size()));
    for (const QString& name : names) {
        contents.push_back(emptyMembers ? QByteArray() : contentOf(name));
        const QByteArray& content = contents.back();
        zip_source_t* source
            = zip_source_buffer(archive, content.constData(), zip_uint64_t(content.size()), 0);
        const QByteArray utf8Name = name.toUtf8();
        const zip_int64_t index = zip_file_add(archive, utf8Name.constData(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            zip_discard(archive);
            return false;
        }
        zip_set_file_compression(archive, zip_uint64_t(index), ZIP_CM_STORE, 0);
    }
    return zip_close(archive) == 0;
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
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("found");

    QTest::newRow("the database") << QStringList{databaseName} << "" << "" << databaseName;
    const QString otherCase = QStringLiteral("CORVANE_Quillard_Desktop.SQLITE3");
    QTest::newRow("name in other case") << QStringList{otherCase} << "" << "" << otherCase;
    QTest::newRow("among other members")
        << QStringList{"readme.txt", databaseName, databaseName + ".bak"} << "" << "" << databaseName;
    QTest::newRow("archive in a Polish folder")
        << QStringList{databaseName} << "" << QStringLiteral("Łódź – bazy żółć") << databaseName;

    QTest::newRow("not a zip") << QStringList() << "notzip" << "" << "";
    QTest::newRow("missing file") << QStringList() << "missing" << "" << "";
    QTest::newRow("no member") << QStringList{"other.sqlite3"} << "" << "" << "";
    QTest::newRow("member in a folder") << QStringList{"x/" + databaseName} << "" << "" << "";
    QTest::newRow("member of size zero") << QStringList{databaseName} << "empty" << "" << "";
    QTest::newRow("CRC mismatch") << QStringList{databaseName} << "crc" << "" << "";
    QTest::newRow("archive cut in half") << QStringList{databaseName} << "cut" << "" << "";
    QTest::newRow("zip bomb over 1 GiB") << QStringList() << "bomb" << "" << "";
}

void TestUnzip::unzipDatabase()
{
    QFETCH(QStringList, members);
    QFETCH(QString, damage);
    QFETCH(QString, folder);
    QFETCH(QString, found);

    QTemporaryDir dir;
    const QString folderPath = folder.isEmpty() ? dir.path() : dir.filePath(folder);
    QVERIFY(QDir().mkpath(folderPath));
    const QString archive = folderPath + QStringLiteral("/baza.zip");
    const QString output = dir.filePath(QStringLiteral("unpacked.sqlite3"));
    // A leftover of an earlier run, longer than any member: replaced or removed.
    QVERIFY(writeFile(output, QByteArray(100000, 'x')));

    if (damage == QLatin1String("notzip"))
        QVERIFY(writeFile(archive, "To nie jest archiwum."));
    else if (damage == QLatin1String("bomb"))
        QVERIFY(writeBomb(archive));
    else if (damage != QLatin1String("missing"))
        QVERIFY(writeZip(archive, members, damage == QLatin1String("empty")));
    QByteArray bytes = readFile(archive);
    if (damage == QLatin1String("crc")) {
        const QByteArray content = contentOf(members.first());
        const int at = bytes.indexOf(content);
        QVERIFY(at > 0);
        bytes[at + content.size() / 2] = '#';
        QVERIFY(writeFile(archive, bytes));
    } else if (damage == QLatin1String("cut")) {
        QVERIFY(writeFile(archive, bytes.left(bytes.size() / 2)));
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
