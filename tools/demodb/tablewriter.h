#pragma once

#include <QHash>
#include <QMap>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>

// Inserts rows into the tables of the database being built, with one prepared
// statement per table, values in the column order of DemoSchema. The first
// failure is kept; later inserts are skipped so that the build stops cleanly.
// Texts are never NULL, empty ones included; pass QVariant() for a NULL.
class TableWriter {
public:
    explicit TableWriter(const QSqlDatabase& database);

    bool insert(const QString& table, const QVariantList& values);

    bool failed() const { return !firstError.isEmpty(); }
    QString error() const { return firstError; }
    QMap<QString, int> counts() const { return rowCounts; }

private:
    struct Statement {
        QSqlQuery query;
        int columnCount = 0;
    };

    QSqlDatabase database;
    QHash<QString, Statement> statements;
    QMap<QString, int> rowCounts;
    QString firstError;
};
