#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct sqlite3;

// The statements of one scan on the bare SQLite library: recorded, with their
// bound values, from the program's own connection while it answers a scan, and
// replayed on a connection of their own. The replay is the database part of the
// scan figure's limit.
class RawScan {
public:
    explicit RawScan(const QString& path);
    ~RawScan();
    RawScan(const RawScan&) = delete;
    RawScan& operator=(const RawScan&) = delete;

    bool isOpen() const { return connection != nullptr; }

    // Starts recording what `handle` (the program's sqlite3 connection) runs.
    static void startRecording(sqlite3* handle);
    // Stops it and returns the statements, each with its values spelled in.
    static QStringList stopRecording(sqlite3* handle);

    // Prepares and steps each statement, reading every column of every row.
    // The rows read in all.
    int replay(const QStringList& statements);

private:
    sqlite3* connection = nullptr;
};
