#include "tablewriter.h"

#include "demoschema.h"

#include <QSqlError>

TableWriter::TableWriter(const QSqlDatabase& database)
    : database(database)
{
}

bool TableWriter::insert(const QString& table, const QVariantList& values)
{
    if (failed())
        return false;
    auto it = statements.find(table);
    if (it == statements.end()) {
        const QStringList columns = DemoSchema::columnNames(table);
        if (columns.isEmpty()) {
            firstError = QLatin1String("no such table: ") + table;
            return false;
        }
        QStringList marks;
        for (int i = 0; i < columns.size(); ++i)
            marks.append(QStringLiteral("?"));
        QSqlQuery query(database);
        const QString statement = QLatin1String("INSERT INTO ") + table + QLatin1String(" (")
            + columns.join(QLatin1String(", ")) + QLatin1String(") VALUES (") + marks.join(QLatin1String(", "))
            + QLatin1Char(')');
        if (!query.prepare(statement)) {
            firstError = statement + QLatin1String(": ") + query.lastError().text();
            return false;
        }
        it = statements.insert(table, Statement{query, columns.size()});
    }
    QSqlQuery& query = it->query;
    const int columnCount = it->columnCount;
    if (values.size() != columnCount) {
        firstError = QStringLiteral("%1: %2 values for %3 columns").arg(table).arg(values.size()).arg(columnCount);
        return false;
    }
    // The driver binds a null QString as NULL; an empty text goes in as ''.
    for (int i = 0; i < values.size(); ++i) {
        const QVariant& value = values.at(i);
        const bool emptyText = value.type() == QVariant::String && value.isNull();
        query.bindValue(i, emptyText ? QVariant(QLatin1String("")) : value);
    }
    if (!query.exec()) {
        firstError = table + QLatin1String(": ") + query.lastError().text();
        return false;
    }
    ++rowCounts[table];
    return true;
}
