#include "db/drugdatabase.h"
#include "db/unzip.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <zip.h>

#include <algorithm>
#include <cstring>
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

// libzip source of `size` zero bytes: a member of over 1 GiB that costs no memory.
struct Zeros {
    zip_uint64_t size = 0;
    zip_uint64_t left = 0;
    zip_error_t error;
};

zip_int64_t readZeros(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto* zeros = static_cast<Zeros*>(state);
    switch (command) {
    case ZIP_SOURCE_OPEN:
        zeros->left = zeros->size;
        return 0;
    case ZIP_SOURCE_READ: {
        const zip_uint64_t count = std::min(length, zeros->left);
        std::memset(data, 0, count);
        zeros->left -= count;
        return zip_int64_t(count);
    }
    case ZIP_SOURCE_STAT: {
        auto* stat = static_cast<zip_stat_t*>(data);
        zip_stat_init(stat);
        stat->size = zeros->size;
        stat->valid |= ZIP_STAT_SIZE;
        return sizeof(zip_stat_t);
    }
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&zeros->error, data, length);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SUPPORTS, -1);
    default:
        return -1;
    }
}

// Members stored as they are, so that a test can find and spoil their bytes;
// the bomb's member is deflated zeros that really inflate past the limit.
bool writeZip(const QString& path, const QStringList& names, bool emptyMembers, bool bomb)
{
    int openError = 0;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &openError);
    if (!archive)
        return false;
    std::vector<QByteArray> contents;
    contents.reserve(size_t(names.size()));
    Zeros zeros;
    zeros.size = zip_uint64_t(maxUnzippedDatabaseSize) + 1;
    zip_error_init(&zeros.error);
    for (const QString& name : names) {
        contents.push_back(emptyMembers ? QByteArray() : contentOf(name));
        zip_source_t* source = bomb ? zip_source_function(archive, readZeros, &zeros)
                                    : zip_source_buffer(archive, contents.back().constData(),
                                                        zip_uint64_t(contents.back().size()), 0);
        const zip_int64_t index = zip_file_add(archive, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            zip_discard(archive);
            return false;
        }
        zip_set_file_compression(archive, zip_uint64_t(index), bomb ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 1);
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
    QTest::newRow("zip bomb over 1 GiB") << QStringList{databaseName} << "bomb" << "" << "";
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

    if (damage == QLatin1String("notzip")) {
        QVERIFY(writeFile(archive, "To nie jest archiwum."));
    } else if (damage != QLatin1String("missing")) {
        QVERIFY(writeZip(archive, members, damage == QLatin1String("empty"), damage == QLatin1String("bomb")));
    }
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
