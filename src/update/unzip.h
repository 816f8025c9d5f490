#pragma once

#include <QString>
#include <QtGlobal>

// A member that says it is bigger than this is refused: no real drug database
// comes near it, and it keeps a zip bomb from filling the disk.
constexpr qint64 maxUnzippedDatabaseSize = qint64(1) << 30;

// Writes the drug database member of the zip archive at `archivePath` to the
// file `outputPath`, replacing what was there. The member's name is matched whole
// and regardless of case; a member of that name inside a folder is not it.
//
// Returns false, with no file left at `outputPath`, when the archive can't be
// read, has no such member, the member is empty or over the size limit, or its
// CRC doesn't match. Logs nothing; safe on any thread.
bool unzipDatabase(const QString& archivePath, const QString& outputPath);
