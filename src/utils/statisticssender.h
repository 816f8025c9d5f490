#pragma once

#include <QJsonObject>
#include <QObject>
#include <QPair>
#include <QQueue>
#include <QSet>
#include <QString>

class QThread;
class QTimer;

// Every notable use of the program becomes one small JSON record for the
// desktop API. Each record is posted from a short-lived worker thread; a record
// that can't be delivered waits in the local store, which a one-minute tick and
// every success drain one record at a time. The user never sees any of it.
class StatisticsSender : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(StatisticsSender)

public:
    // Made at the first record of the run and never destroyed, so that no
    // overdue record goes out before a new one has been made.
    static StatisticsSender* instance();

    // Starts one worker thread that posts `record` to `url`.
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

signals:
    void postingSucceed();

public slots:
    void emitPostingSucceed();
    void postOverdueStats();

private:
    StatisticsSender();

    void startWorker(const QString& url, const QJsonObject& record);
    void store(const QString& url, const QJsonObject& record);
    void storeUnstored();
    void workerEnded(QThread* thread);
    // Stops the workers when the program quits; see the definition.
    void endWorkers();

    QTimer* timer = nullptr;
    QSet<QThread*> workers;
    QQueue<QPair<QString, QJsonObject>> waiting;
    QQueue<QPair<QString, QJsonObject>> unstored;
    bool quitting = false;
};
