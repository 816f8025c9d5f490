#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <optional>

// One named connection to a SQLite file beside the program, and the statements
// prepared on it. A QSqlDatabase may only be used by the thread that made it, so
// each thread has its own DatabaseConnection per file: the main thread's carries
// the file name as its connection name, another thread's gets a suffix, and a
// thread's connections are removed when the thread ends.
class DatabaseConnection {
    Q_DISABLE_COPY(DatabaseConnection)

public:
    explicit DatabaseConnection(const QString& fileName);
    // A connection of its own name, apart from the calling thread's.
    DatabaseConnection(const QString& fileName, const QString& connectionName);
    ~DatabaseConnection();

    // The calling thread's connection to `fileName`, made (not opened) on first use.
    static DatabaseConnection& of(const QString& fileName);

    QString fileName() const { return file; }
    QString connectionName() const { return name; }
    QSqlDatabase handle() const { return db; }
    bool isOpen() const;

    // Adds the connection anew with the file's current path and opens it. A drug
    // database that SQLite can't open at all ends the process with exit(1) on the
    // main thread; on any other thread the connection just stays closed.
    void open();
    // As open(), but a file that doesn't open only leaves the connection closed,
    // on any thread: for work that can do without the base.
    bool tryOpen();
    // Drops the prepared statements, then closes, so that the file can be replaced.
    void close();

    // `text` prepared on this connection, once, and reused by later calls. Empty
    // when the connection is closed or the statement doesn't prepare (a missing
    // table, a file that isn't a database); the error goes to the log.
    std::optional<QSqlQuery> statement(const QString& text);

private:
    void dropStatements();

    QString file;
    QString name;
    QSqlDatabase db;
    QHash<QString, QSqlQuery> statements;
};
