#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The tables of the drug database as the program reads them. Numeric keys are
// INTEGER columns: SQLite gives a bound text compared with such a column
// numeric affinity, so both "v.vid = 12" and "v.vid = ?" with "12" find the row.
class DemoSchema {
public:
    struct Table {
        QString name;
        QStringList columns; // "name TYPE ...", in the order of insertion
    };

    static const QList<Table>& tables();
    static QStringList columnNames(const QString& table);
    static bool create(QSqlDatabase& database, QString* error);
    // Indexes a publisher would ship for the look-ups by package and group.
    static bool createIndexes(QSqlDatabase& database, QString* error);
};
