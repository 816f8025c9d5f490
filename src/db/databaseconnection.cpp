#include "databaseconnection.h"

#include "appdir.h"
#include "drugdatabase.h"
#include "sqlitefolding.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSqlError>
#include <QThread>
#include <QThreadStorage>

#include <cstdlib>

namespace {

const QString driverName = QStringLiteral("QSQLITE");

// Statements made from typed words vary with their number; past this many the
// cache starts over rather than grow without end.
constexpr int maxCachedStatements = 64;

struct ThreadConnections {
    ThreadConnections() = default;
    ThreadConnections(const ThreadConnections&) = delete;
    ThreadConnections& operator=(const ThreadConnections&) = delete;
    ~ThreadConnections() { qDeleteAll(byFile); }

    QHash<QString, DatabaseConnection*> byFile;
};

// The main thread's storage is emptied when the application object goes, a
// worker's when the worker thread finishes.
Q_GLOBAL_STATIC(QThreadStorage<ThreadConnections*>, threadConnections)

bool onMainThread()
{
    const QCoreApplication* app = QCoreApplication::instance();
    return app == nullptr || QThread::currentThread() == app->thread();
}

QString connectionNameOf(const QString& fileName)
{
    if (onMainThread())
        return fileName;
    return fileName + QStringLiteral("@thread-")
           + QString::number(reinterpret_cast<quintptr>(QThread::currentThreadId()), 16);
}

} // namespace

DatabaseConnection::DatabaseConnection(const QString& fileName)
    : file(fileName)
    , name(connectionNameOf(fileName))
{
}

DatabaseConnection::DatabaseConnection(const QString& fileName, const QString& connectionName)
    : file(fileName)
    , name(connectionName)
{
}

DatabaseConnection::~DatabaseConnection()
{
    dropStatements();
    if (db.isValid())
        db.close();
    db = QSqlDatabase();
    if (QSqlDatabase::contains(name))
        QSqlDatabase::removeDatabase(name);
}

DatabaseConnection& DatabaseConnection::of(const QString& fileName)
{
    QThreadStorage<ThreadConnections*>* storage = threadConnections();
    if (!storage->hasLocalData())
        storage->setLocalData(new ThreadConnections);
    ThreadConnections* connections = storage->localData();
    DatabaseConnection*& connection = connections->byFile[fileName];
    if (connection == nullptr)
        connection = new DatabaseConnection(fileName);
    return *connection;
}

bool DatabaseConnection::isOpen() const
{
    return db.isValid() && db.isOpen();
}

void DatabaseConnection::open()
{
    // Without its drug database the program has nothing to show; any other
    // store (the statistics) stays closed and its operations do nothing. Only
    // the GUI thread ends the process: from a pool thread, exit() would tear
    // the GUI thread down in the middle of its work.
    if (!tryOpen() && file == DrugDatabase::drugDatabaseName && onMainThread())
        std::exit(1);
}

bool DatabaseConnection::tryOpen()
{
    // Our own handle and statements go first, so that replacing the connection
    // doesn't leave queries behind on the old one.
    dropStatements();
    db = QSqlDatabase();
    if (QSqlDatabase::contains(name))
        QSqlDatabase::removeDatabase(name);

    db = QSqlDatabase::addDatabase(driverName, name);
    const QString path = AppDir::dataFile(file);
    db.setDatabaseName(path);
    if (!db.isValid())
        return false;
    // Workers store records beside the main thread, each on its own connection;
    // a writer that finds the file busy waits rather than losing its record.
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
    if (!db.open()) {
        qDebug().noquote() << "Database error" << db.lastError().text();
        return false;
    }
    qDebug().noquote() << "Database error" << db.lastError().text();
    if (!SqliteFolding::install(db))
        qDebug() << "D/DatabaseConnection::open | SQLite folds only ASCII letters on" << name;
    // SQLite reads the file only at the first statement: a file that isn't a
    // database opens fine and shows up here as no tables.
    qDebug().noquote() << QStringLiteral("Table count: ") + QString::number(db.tables(QSql::Tables).size());
    qDebug().noquote() << QStringLiteral("Database path: ") + path;
    return true;
}

void DatabaseConnection::close()
{
    dropStatements();
    if (db.isValid())
        db.close();
}

std::optional<QSqlQuery> DatabaseConnection::statement(const QString& text)
{
    if (!isOpen())
        return std::nullopt;
    const auto found = statements.constFind(text);
    if (found != statements.constEnd())
        return *found;

    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(text)) {
        qDebug().noquote() << "Database error" << query.lastError().text();
        return std::nullopt;
    }
    if (statements.size() >= maxCachedStatements)
        statements.clear();
    statements.insert(text, query);
    return query;
}

void DatabaseConnection::dropStatements()
{
    statements.clear();
}
