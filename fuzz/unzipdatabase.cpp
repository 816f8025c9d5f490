// Any bytes as the database archive that the update service delivers.

#include "fuzzsupport.h"

#include "update/unzip.h"

#include <QFile>
#include <QFileInfo>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray archive = FuzzSupport::bytes(data, size);
    const QString archivePath = FuzzSupport::workDir() + QStringLiteral("/temp.zip");
    const QString outputPath = FuzzSupport::workDir() + QStringLiteral("/unpacked.sqlite3");
    {
        QFile file(archivePath);
        FUZZ_REQUIRE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        FUZZ_REQUIRE(file.write(archive) == archive.size());
    }
    // A base of an earlier attempt stands at the output: a refusal must not leave it there.
    {
        QFile stale(outputPath);
        FUZZ_REQUIRE(stale.open(QIODevice::WriteOnly | QIODevice::Truncate));
        stale.write("stale base");
    }

    const bool unpacked = unzipDatabase(archivePath, outputPath);

    const QFileInfo output(outputPath);
    if (unpacked) {
        // A database member is never empty nor beyond the limit, and the stale
        // base is gone: what stands is the member.
        FUZZ_REQUIRE(output.exists());
        FUZZ_REQUIRE(output.size() > 0 && output.size() <= maxUnzippedDatabaseSize);
        // Only a zip archive (a local file or end-of-directory record) can hold one.
        FUZZ_REQUIRE(archive.contains("PK"));
    } else {
        FUZZ_REQUIRE(!output.exists());
    }

    // The archive is only read, never written back.
    QFile after(archivePath);
    FUZZ_REQUIRE(after.open(QIODevice::ReadOnly));
    FUZZ_REQUIRE(after.readAll() == archive);

    QFile::remove(outputPath);
    return 0;
}
