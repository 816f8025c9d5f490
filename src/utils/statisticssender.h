#pragma once

#include <QJsonObject>
#include <QObject>
#include <QPair>
#include <QQueue>
#include <QList>
#include <QString>

class PostToAPI;
class QThread;
class QTimer;

// Every notable use of the program becomes one small JSON record for the
// desktop API. Records are posted by a small pool of long-lived worker threads; a record
// that can't be delivered waits in the local store, which a one-minute tick and
// every success drain one record at a time. The user never sees any of it.
class StatisticsSender : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(StatisticsSender)

public:
    // Made at the first record of the run and never destroyed, so that no
    // overdue record goes out before a new one has been made.
    static StatisticsSender* instance();

    // Long-lived workers, each a thread with its own network manager and store
    // connection, made as records first need them and kept to the end. A scan
    // sends two records; past this many under way the records wait in memory,
    // in order, and none is dropped. A burst of a thousand clicks offline stays
    // within the process's file descriptors.
    static constexpr int maxWorkers = 4;

    // Hands `record` for `url` to an idle worker, or queues it in memory.
    void post(const QString& url, const QJsonObject& record);

    static void sendSearch(const QString& phrase, const QString& window, const QString& type);
    static void sendScan(const QString& ean, const QString& vid);
    static void sendClick(const QString& vid, const QString& window, const QString& type);
    static void sendRecipeGroup(int groupId);
    static void sendRecipeDrug(int drugId);
    static void sendSubstituteView(const QString& source, const QString& vid);
    static void sendSubstituteClick(const QString& targetVid, const QString& vid);

    // Records the store could not take (a full disk, a read-only file), kept
    // in memory until it can.
    int recordsInMemory() const { return int(unstored.size()); }
    // Records handed over faster than the workers post them, waiting for one.
    int recordsWaiting() const { return int(waiting.size()); }

signals:
    void postingSucceed();

public slots:
    void emitPostingSucceed();
    void postOverdueStats();

private:
    StatisticsSender();

    struct Worker {
        QThread* thread = nullptr;
        PostToAPI* poster = nullptr;
        bool busy = false;
    };

    Worker& startWorker();
    void dispatch(Worker& worker, const QString& url, const QJsonObject& record);
    void workerIdle(PostToAPI* poster);
    void store(const QString& url, const QJsonObject& record);
    void storeUnstored();
    // Stops the workers when the program quits; see the definition.
    void endWorkers();

    QTimer* timer = nullptr;
    QList<Worker> workers;
    QQueue<QPair<QString, QJsonObject>> waiting;
    QQueue<QPair<QString, QJsonObject>> unstored;
    bool quitting = false;
};
