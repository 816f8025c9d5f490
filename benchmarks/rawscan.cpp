#include "rawscan.h"

#include <QByteArray>
#include <QFile>

#include <sqlite3.h>

namespace {

QStringList recorded;

int onStatement(unsigned type, void*, void* statement, void*)
{
    if (type != SQLITE_TRACE_STMT)
        return 0;
    char* sql = sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement));
    if (sql)
        recorded << QString::fromUtf8(sql);
    sqlite3_free(sql);
    return 0;
}

} // namespace

RawScan::RawScan(const QString& path)
{
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &connection, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(connection);
        connection = nullptr;
    }
}

RawScan::~RawScan()
{
    sqlite3_close(connection);
}

void RawScan::startRecording(sqlite3* handle)
{
    recorded.clear();
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, onStatement, nullptr);
}

QStringList RawScan::stopRecording(sqlite3* handle)
{
    sqlite3_trace_v2(handle, 0, nullptr, nullptr);
    return recorded;
}

int RawScan::replay(const QStringList& statements)
{
    int rows = 0;
    for (const QString& text : statements) {
        const QByteArray sql = text.toUtf8();
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(connection, sql.constData(), sql.size(), &statement, nullptr) != SQLITE_OK)
            continue;
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < columns; ++column)
                sqlite3_column_text(statement, column);
            ++rows;
        }
        sqlite3_finalize(statement);
    }
    return rows;
}
