#include "searchindexloader.h"

#include "databaseconnection.h"
#include "drugdatabase.h"
#include "searchindex.h"

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QFuture>
#include <QMutex>
#include <QMutexLocker>
#include <QSqlDriver>
#include <QThread>
#include <QVariant>
#include <QtConcurrent>

#include <sqlite3.h>

#include <atomic>

namespace {

struct State {
    QMutex mutex;
    std::shared_ptr<const SearchIndex> index;
    QFuture<void> job;
    std::shared_ptr<std::atomic<bool>> cancelled;
    quint64 generation = 0;
    // One build per opening: a file the statement can't index isn't tried at every search.
    bool started = false;
};

Q_GLOBAL_STATIC(State, state)

bool onMainThread()
{
    const QCoreApplication* app = QCoreApplication::instance();
    return app != nullptr && QThread::currentThread() == app->thread();
}

sqlite3* sqliteHandle(const QSqlDatabase& database)
{
    const QVariant handle = database.driver() ? database.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3* const*>(handle.constData());
}

void build(quint64 generation, const QString& statement, std::shared_ptr<std::atomic<bool>> cancelled)
{
    QElapsedTimer timer;
    timer.start();
    // A connection of the build's own, never the thread's: QFuture::waitForFinished
    // runs a job that hasn't started yet on the waiting thread, which may be the
    // GUI thread with its own connection open. A base that doesn't open means no
    // index, never the end of the program.
    DatabaseConnection connection(DrugDatabase::drugDatabaseName,
                                  DrugDatabase::drugDatabaseName + QStringLiteral("@search-index"));
    std::shared_ptr<const SearchIndex> index;
    if (connection.tryOpen())
        index = SearchIndex::build(sqliteHandle(connection.handle()), statement, *cancelled);
    else
        qDebug() << "D/SearchIndexLoader::build | the base doesn't open, no index";
    // Closed at once: an open connection would keep an update from replacing the file.
    connection.close();
    if (index)
        qDebug() << "D/SearchIndexLoader::build | rows" << index->rowCount() << "in" << timer.elapsed() << "ms";
    else if (!cancelled->load())
        qDebug() << "D/SearchIndexLoader::build | no index, the statement serves the search";

    QMutexLocker locker(&state->mutex);
    if (generation == state->generation && !cancelled->load())
        state->index = index;
}

} // namespace

namespace SearchIndexLoader {

void start(const QString& statement)
{
    if (!onMainThread())
        return;
    State* s = state();
    if (s->started)
        return;
    s->started = true;
    const quint64 generation = ++s->generation;
    s->cancelled = std::make_shared<std::atomic<bool>>(false);
    s->job = QtConcurrent::run(build, generation, statement, s->cancelled);
}

std::shared_ptr<const SearchIndex> current()
{
    if (!onMainThread())
        return nullptr;
    QMutexLocker locker(&state->mutex);
    return state->index;
}

void drop()
{
    State* s = state();
    if (s->cancelled)
        s->cancelled->store(true);
    // The build holds the base open on its own connection, and Windows renames
    // no open file. Cancelled, it stops within 1,024 rows: a wait of moments.
    s->job.waitForFinished();
    QMutexLocker locker(&s->mutex);
    ++s->generation;
    s->index.reset();
    s->started = false;
}

bool waitUntilReady()
{
    state->job.waitForFinished();
    return current() != nullptr;
}

} // namespace SearchIndexLoader
