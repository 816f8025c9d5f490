#include "statisticssender.h"

#include "db/drugdatabase.h"
#include "urls.h"
#include "utils/appkey.h"
#include "utils/posttoapi.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QJsonDocument>
#include <QThread>
#include <QTimer>

namespace {

constexpr int overdueInterval = 60000;


StatisticsSender* theSender = nullptr;

QString now()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QJsonObject newRecord()
{
    QJsonObject record;
    record.insert(QStringLiteral("app_key"), ensureAppKey());
    return record;
}

} // namespace

StatisticsSender* StatisticsSender::instance()
{
    if (!theSender)
        theSender = new StatisticsSender;
    return theSender;
}

StatisticsSender::StatisticsSender()
    : timer(new QTimer(this))
{
    timer->setInterval(overdueInterval);
    connect(timer, &QTimer::timeout, this, &StatisticsSender::postOverdueStats);
    timer->start();

    if (QCoreApplication* app = QCoreApplication::instance())
        connect(app, &QCoreApplication::aboutToQuit, this, &StatisticsSender::endWorkers);
    // Tests and other ends that never run the event loop get no aboutToQuit;
    // the application's destructor still calls this.
    qAddPostRoutine([] {
        if (theSender)
            theSender->endWorkers();
    });
}

void StatisticsSender::post(const QString& url, const QJsonObject& record)
{
    if (quitting) {
        store(url, record);
        return;
    }
    for (Worker& worker : workers) {
        if (!worker.busy) {
            dispatch(worker, url, record);
            return;
        }
    }
    if (workers.size() < maxWorkers) {
        dispatch(startWorker(), url, record);
        return;
    }
    waiting.enqueue(qMakePair(url, record));
}

StatisticsSender::Worker& StatisticsSender::startWorker()
{
    Worker worker;
    worker.thread = new QThread;
    worker.thread->setObjectName(QStringLiteral("statistics"));
    worker.poster = new PostToAPI;
    worker.poster->moveToThread(worker.thread);

    PostToAPI* poster = worker.poster;
    connect(poster, &PostToAPI::postingSucceed, this, &StatisticsSender::emitPostingSucceed);
    connect(poster, &PostToAPI::postingSucceed, this, &StatisticsSender::postOverdueStats);
    connect(poster, &PostToAPI::notStored, this,
            [this](const QString& url, const QJsonObject& record) { unstored.enqueue(qMakePair(url, record)); });
    connect(poster, &PostToAPI::finished, this, [this, poster] { workerIdle(poster); });

    worker.thread->start(QThread::InheritPriority);
    workers.append(worker);
    return workers.last();
}

void StatisticsSender::dispatch(Worker& worker, const QString& url, const QJsonObject& record)
{
    worker.busy = true;
    PostToAPI* poster = worker.poster;
    QMetaObject::invokeMethod(poster, [poster, url, record] { poster->post(url, record); }, Qt::QueuedConnection);
}

void StatisticsSender::workerIdle(PostToAPI* poster)
{
    for (Worker& worker : workers) {
        if (worker.poster != poster)
            continue;
        worker.busy = false;
        if (!quitting && !waiting.isEmpty()) {
            const QPair<QString, QJsonObject> next = waiting.dequeue();
            dispatch(worker, next.first, next.second);
        }
        return;
    }
}

// Nothing would otherwise wait for the workers, and a thread still running
// when the statics go down takes the process with it: its store connection
// lives in storage that goes with them. The workers are asked to stop (a probe
// or post under way ends at once) and waited for to the end, which a store held
// by another program delays by at most SQLite's busy time-out. The records not
// yet started go into the store.
void StatisticsSender::endWorkers()
{
    if (quitting)
        return;
    quitting = true;
    timer->stop();
    while (!waiting.isEmpty()) {
        const QPair<QString, QJsonObject> next = waiting.dequeue();
        store(next.first, next.second);
    }
    for (const Worker& worker : qAsConst(workers))
        worker.thread->quit();
    for (const Worker& worker : qAsConst(workers)) {
        worker.thread->wait();
        // Its thread has ended: the poster and its network manager go from here.
        delete worker.poster;
        delete worker.thread;
    }
    workers.clear();
}

void StatisticsSender::store(const QString& url, const QJsonObject& record)
{
    if (!DrugDatabase::storeStatistics(url, QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact))))
        unstored.enqueue(qMakePair(url, record));
}

// On a full disk or a read-only store the records wait in memory, in order,
// and go into the store at the first tick that finds room again.
void StatisticsSender::storeUnstored()
{
    while (!unstored.isEmpty()) {
        const QPair<QString, QJsonObject>& next = unstored.head();
        if (!DrugDatabase::storeStatistics(next.first,
                                           QString::fromUtf8(QJsonDocument(next.second).toJson(QJsonDocument::Compact))))
            return;
        unstored.dequeue();
    }
}

void StatisticsSender::emitPostingSucceed()
{
    emit postingSucceed();
}

void StatisticsSender::postOverdueStats()
{
    qDebug() << "Sending overdue stats";
    storeUnstored();
    if (DrugDatabase::isStatisticsEmpty())
        return;
    const QPair<QString, QByteArray> overdue = DrugDatabase::takeOverdueRecord();
    // Nothing was taken (the store is closed or busy): posting an empty address
    // would only put an empty record back into the store.
    if (overdue.first.isEmpty())
        return;
    post(overdue.first, QJsonDocument::fromJson(overdue.second).object());
}

void StatisticsSender::sendSearch(const QString& phrase, const QString& window, const QString& type)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("phrase"), phrase);
    record.insert(QStringLiteral("window"), window);
    record.insert(QStringLiteral("type"), type);
    record.insert(QStringLiteral("search_date"), now());
    instance()->post(usageSearchUrl, record);
}

void StatisticsSender::sendScan(const QString& ean, const QString& vid)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("ean"), ean);
    record.insert(QStringLiteral("vid"), vid);
    record.insert(QStringLiteral("scan_date"), now());
    instance()->post(usageScannedEanUrl, record);
}

void StatisticsSender::sendClick(const QString& vid, const QString& window, const QString& type)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("vid"), vid);
    record.insert(QStringLiteral("window"), window);
    record.insert(QStringLiteral("type"), type);
    record.insert(QStringLiteral("click_date"), now());
    instance()->post(usageClickUrl, record);
}

void StatisticsSender::sendRecipeGroup(int groupId)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("group_id"), groupId);
    record.insert(QStringLiteral("click_date"), now());
    instance()->post(usageRecipeGroupUrl, record);
}

void StatisticsSender::sendRecipeDrug(int drugId)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("drug_id"), drugId);
    record.insert(QStringLiteral("click_date"), now());
    instance()->post(usageRecipeDrugUrl, record);
}

void StatisticsSender::sendSubstituteView(const QString& source, const QString& vid)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("source"), source);
    record.insert(QStringLiteral("vid"), vid);
    record.insert(QStringLiteral("view_date"), now());
    instance()->post(usageSubstituteViewUrl, record);
}

void StatisticsSender::sendSubstituteClick(const QString& targetVid, const QString& vid)
{
    QJsonObject record = newRecord();
    record.insert(QStringLiteral("vid_to"), targetVid);
    record.insert(QStringLiteral("vid"), vid);
    record.insert(QStringLiteral("click_date"), now());
    instance()->post(usageSubstituteClickUrl, record);
}
