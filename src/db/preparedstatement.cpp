#include "preparedstatement.h"

#include "databaseconnection.h"

#include <QDebug>
#include <QSqlError>

#include <optional>

PreparedStatement::PreparedStatement(const QString& fileName, const QString& text, const QVariantList& values)
{
    DatabaseConnection& connection = DatabaseConnection::of(fileName);
    if (!connection.isOpen())
        connection.open();
    if (!connection.isOpen()) {
        qDebug() << "Database is closed";
        return;
    }
    std::optional<QSqlQuery> prepared = connection.statement(text);
    if (!prepared)
        return;
    query = *prepared;
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    executed = query.exec();
    if (!executed)
        qDebug().noquote() << "Database error" << query.lastError().text();
}

PreparedStatement::~PreparedStatement()
{
    if (executed)
        query.finish();
}

bool PreparedStatement::next()
{
    return executed && query.next();
}
