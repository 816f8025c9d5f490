#include "rawsearch.h"

#include <QByteArray>
#include <QFile>

#include <sqlite3.h>

namespace {

const char statementStart[] =
    "SELECT v.vid, v.name, xp.name, g.inn, v.kind, v.dose, v.box, v.company, v.prices, v.iid, g.gid "
    "FROM v LEFT JOIN g ON g.gid = v.gid LEFT JOIN xp ON xp.id = v.pid LEFT JOIN ve ON ve.vid = v.vid WHERE 1 ";
const char wordCondition[] = " AND ((UPPER(v.name) LIKE UPPER('% ' || ? || '%') OR UPPER(v.name) LIKE UPPER(? || "
                             "'%')) OR ve.ekd LIKE '%' || ? || '%') ";

} // namespace

RawSearch::RawSearch(const QString& path)
{
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &connection, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
        sqlite3_close(connection);
        connection = nullptr;
    }
}

RawSearch::~RawSearch()
{
    sqlite3_close(connection);
}

int RawSearch::run(const QStringList& words, int limit)
{
    QByteArray sql(statementStart);
    for (int i = 0; i < words.size(); ++i)
        sql += wordCondition;
    sql += " LIMIT " + QByteArray::number(limit);

    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection, sql.constData(), sql.size(), &statement, nullptr) != SQLITE_OK)
        return -1;
    int parameter = 1;
    for (const QString& word : words) {
        const QByteArray text = word.toUtf8();
        for (int i = 0; i < 3; ++i)
            sqlite3_bind_text(statement, parameter++, text.constData(), text.size(), SQLITE_TRANSIENT);
    }
    int rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < 11; ++column)
            sqlite3_column_text(statement, column);
        ++rows;
    }
    sqlite3_finalize(statement);
    return rows;
}
