#include "unzip.h"

#include "db/drugdatabase.h"

#include <QByteArray>
#include <QFile>

#include <zip.h>

#include <memory>

namespace {

constexpr qint64 chunkSize = 256 * 1024;

struct ArchiveCloser {
    // Closes the archive on every way out; it is opened read-only, so nothing is written back.
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

struct MemberCloser {
    void operator()(zip_file_t* member) const { zip_fclose(member); }
};

QByteArray libraryPath(const QString& path)
{
#ifdef Q_OS_WIN
    // libzip takes file names on Windows as UTF-8 and widens them itself.
    return path.toUtf8();
#else
    return QFile::encodeName(path);
#endif
}

bool extract(const QString& archivePath, const QString& outputPath)
{
    int openError = 0;
    const std::unique_ptr<zip_t, ArchiveCloser> archive(
        zip_open(libraryPath(archivePath).constData(), ZIP_RDONLY, &openError));
    if (!archive)
        return false;

    // Whole name, any case; ZIP_FL_NODIR would also take the name from inside a folder.
    const QByteArray memberName = DrugDatabase::drugDatabaseName.toUtf8();
    const zip_int64_t index = zip_name_locate(archive.get(), memberName.constData(), ZIP_FL_NOCASE);
    if (index < 0)
        return false;

    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive.get(), zip_uint64_t(index), 0, &stat) != 0 || !(stat.valid & ZIP_STAT_SIZE))
        return false;
    if (stat.size == 0 || stat.size > zip_uint64_t(maxUnzippedDatabaseSize))
        return false;
    const qint64 size = qint64(stat.size);

    const std::unique_ptr<zip_file_t, MemberCloser> member(
        zip_fopen_index(archive.get(), zip_uint64_t(index), 0));
    if (!member)
        return false;

    QFile output(outputPath);
    if (!output.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;

    // Read to the end: libzip checks the CRC only when the member's last byte is out.
    QByteArray chunk(int(chunkSize), Qt::Uninitialized);
    qint64 written = 0;
    for (;;) {
        const zip_int64_t read = zip_fread(member.get(), chunk.data(), zip_uint64_t(chunk.size()));
        if (read < 0)
            return false;
        if (read == 0)
            break;
        written += read;
        // A member that inflates past what it declared is no honest archive.
        if (written > size)
            return false;
        if (output.write(chunk.constData(), read) != read)
            return false;
    }
    if (written != size || !output.flush())
        return false;
    output.close();
    return output.error() == QFileDevice::NoError;
}

} // namespace

bool unzipDatabase(const QString& archivePath, const QString& outputPath)
{
    if (extract(archivePath, outputPath))
        return true;
    QFile::remove(outputPath);
    return false;
}
