#pragma once

#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>

// One run of a statement on the calling thread's connection to a file beside
// the program: the connection is opened if need be, the statement prepared once
// per connection and reused, the values bound to its "?" in order. Failures
// ("Database is closed", "Database error ...") go to the log and give no rows.
// The statement is reset when this object goes, so that it holds no read lock
// on the file; read the rows before running another statement.
class PreparedStatement {
    Q_DISABLE_COPY(PreparedStatement)

public:
    PreparedStatement(const QString& fileName, const QString& text, const QVariantList& values = {});
    ~PreparedStatement();

    bool isExecuted() const { return executed; }
    // Rows changed by an INSERT, UPDATE or DELETE; 0 when it failed.
    int changedRows() const { return executed ? query.numRowsAffected() : 0; }
    bool next();
    QVariant value(int column) const { return query.value(column); }
    QString text(int column) const { return query.value(column).toString(); }
    int number(int column) const { return query.value(column).toInt(); }

private:
    QSqlQuery query;
    bool executed = false;
};
