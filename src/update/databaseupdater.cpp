#include "databaseupdater.h"

#include "appdir.h"
#include "db/drugdatabase.h"
#include "update/unzip.h"
#include "urls.h"
#include "utils/raven.h"

#include <QDebug>
#include <QFile>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QStringList>
#include <QUuid>
#include <QtConcurrent/QtConcurrentRun>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cstdio>
#endif

namespace {

const char* const sourcePath = "../QuillardDesktop/db/databaseupdater";
const QString dateFormat = QStringLiteral("yyyy-MM-dd");
const QTime checkTime(3, 0);

void report(const char* function, int line, const QString& message)
{
    Raven::capture(3, Raven::locationString(sourcePath, function, line), message, QJsonObject(),
                   QJsonObject());
}

// The new base is unpacked beside the old one, so that the rename stays on one disk.
QString unpackedPath(const QString& databasePath)
{
    return databasePath + QStringLiteral(".part");
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

// Only a file that opens as a drug database may take the old one's place. The
// connection has a name of its own and is gone before the file is renamed.
bool isDrugDatabase(const QString& path)
{
    const QString name
        = QStringLiteral("databaseupdater-check-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    bool valid = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        db.setDatabaseName(path);
        if (db.open()) {
            // SQLite reads the file only now: a file that isn't a database lists no tables.
            const QStringList tables = db.tables(QSql::Tables);
            valid = tables.contains(QStringLiteral("v")) && tables.contains(QStringLiteral("cfg"));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(name);
    return valid;
}

// Runs on a pool thread and touches no member of the updater. The old base is
// never written: everything goes to `unpacked`, which is removed unless it is good.
bool unpack(const QByteArray& archive, const QString& archiveFile, const QString& unpacked)
{
    const bool good
        = writeFile(archiveFile, archive) && unzipDatabase(archiveFile, unpacked) && isDrugDatabase(unpacked);
    QFile::remove(archiveFile);
    if (!good)
        QFile::remove(unpacked);
    return good;
}

// One step from the old base to the new one: a reader finds either whole, never
// a half-written file or none at all.
bool replaceFile(const QString& from, const QString& to)
{
#ifdef Q_OS_WIN
    const auto* source = reinterpret_cast<const wchar_t*>(from.utf16());
    const auto* target = reinterpret_cast<const wchar_t*>(to.utf16());
    return MoveFileExW(source, target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
#else
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
#endif
}

} // namespace

DatabaseUpdater::DatabaseUpdater(QObject* parent)
    : QObject(parent)
    , unzipWatcher(new QFutureWatcher<bool>(this))
    , updateTimer(this)
{
    connect(unzipWatcher, &QFutureWatcher<bool>::finished, this, &DatabaseUpdater::unzipFinished);
    connect(&refundCheckGet, &QtHttpGet::result, this, &DatabaseUpdater::onCheckRefundResult);
    connect(&versionCheckGet, &QtHttpGet::result, this, &DatabaseUpdater::onCheckResult);
    connect(&databaseGet, &QtHttpGet::result, this, &DatabaseUpdater::onDbResult);

    // A precise timer never fires early, so a check never lands just before 03:00
    // and again just after it.
    updateTimer.setObjectName(QStringLiteral("dailyCheckTimer"));
    updateTimer.setSingleShot(true);
    updateTimer.setTimerType(Qt::PreciseTimer);
    connect(&updateTimer, &QTimer::timeout, this, &DatabaseUpdater::updateTimerElapsed);
    updateTimer.start(int(msecsToNextCheck(QDateTime::currentDateTime())));
}

DatabaseUpdater::~DatabaseUpdater()
{
    // An unpacking cut short by the program's end leaves no half base behind.
    // Only the quitting program waits here, never a window in use.
    if (unzipWatcher->isRunning()) {
        unzipWatcher->waitForFinished();
        QFile::remove(unpackedPath(databasePath));
    }
}

qint64 DatabaseUpdater::msecsToNextCheck(const QDateTime& now)
{
    QDateTime next(now.date(), checkTime);
    if (next <= now)
        next = QDateTime(now.date().addDays(1), checkTime);
    return now.msecsTo(next);
}

void DatabaseUpdater::check()
{
    qDebug().noquote() << "Online database version :" << localVersion;
    refundCheckGet.get(dbRefundInfoUrl + localVersion);
}

void DatabaseUpdater::download()
{
    databaseGet.get(dbGetUrl + localVersion);
}

bool DatabaseUpdater::isNewVersionAvailable() const
{
    qDebug().noquote() << (newVersionAvailable ? "true" : "false");
    return newVersionAvailable;
}

bool DatabaseUpdater::isNewRefundListAvailable() const
{
    qDebug().noquote() << (newRefundListAvailable ? "true" : "false");
    return newRefundListAvailable;
}

void DatabaseUpdater::setLocalVersion(const QString& version)
{
    qDebug().noquote() << "Setting local database version to :" << version;
    localVersion = version;
}

void DatabaseUpdater::replaceDatabase(const QString& path)
{
    if (unzipWatcher->isRunning()) {
        qDebug() << "D/DatabaseUpdater::replaceDatabase | an unpacking is already running";
        return;
    }
    databasePath = path;
    // Writing the archive, unpacking and checking the new base all happen off
    // the GUI thread: a base of 100 MB would freeze the window for seconds.
    unzipWatcher->setFuture(QtConcurrent::run(unpack, archiveData, AppDir::archivePath(), unpackedPath(path)));
    archiveData.clear();
}

QDateTime DatabaseUpdater::refundListDate(const QString& answer)
{
    const QStringList parts = answer.split(QLatin1Char('#'));
    if (parts.size() != 2)
        return QDateTime();
    QString text = parts.at(1);
    text.remove(QRegularExpression(QStringLiteral("[\n\t\r]")));
    // QDateTime also reads a signed or short year ("+020-04-01" as the year 20):
    // only a day written out in full is a date here.
    static const QRegularExpression fullDate(QStringLiteral("^[0-9]{4}-[0-9]{2}-[0-9]{2}$"));
    if (!fullDate.match(text).hasMatch())
        return QDateTime();
    return QDateTime::fromString(text, dateFormat);
}

void DatabaseUpdater::onCheckRefundResult(QNetworkReply* reply)
{
    // A failure here is no failure of the check: the version check still runs.
    bool newerList = false;
    if (reply->error() == QNetworkReply::OperationCanceledError) {
        qDebug().noquote() << "Canceled";
    } else if (reply->error() != QNetworkReply::NoError) {
        qDebug().noquote() << "Error: " + reply->errorString();
    } else {
        const QDateTime online = refundListDate(QtHttpGet::replyText(reply));
        const QDateTime local = QDateTime::fromString(DrugDatabase::listDate(), dateFormat);
        // An unreadable date on either side leaves the decision to the version.
        newerList = online.isValid() && local.isValid() && local < online;
    }

    if (newerList) {
        newVersionAvailable = true;
        newRefundListAvailable = true;
        emit checked();
        return;
    }
    versionCheckGet.get(dbInfoUrl + localVersion);
}

void DatabaseUpdater::onCheckResult(QNetworkReply* reply)
{
    if (reply->error() == QNetworkReply::OperationCanceledError) {
        qDebug().noquote() << "Canceled";
        fail();
        return;
    }
    if (reply->error() != QNetworkReply::NoError) {
        qDebug().noquote() << "Error: " + reply->errorString();
        report("onCheckResult", __LINE__, QStringLiteral("Check error"));
        fail();
        return;
    }

    const QString online = QtHttpGet::replyText(reply).simplified();
    // A text that isn't a number reads as 0, which never offers an update.
    newVersionAvailable = online.toLongLong(nullptr, 10) > localVersion.toLongLong(nullptr, 10);
    qDebug().noquote() << "Current database version :" << localVersion;
    qDebug().noquote() << "New database version :" << online;
    emit checked();
}

void DatabaseUpdater::onDbResult(QNetworkReply* reply)
{
    if (reply->error() == QNetworkReply::OperationCanceledError) {
        qDebug().noquote() << "Canceld";
        fail();
        return;
    }
    if (reply->error() != QNetworkReply::NoError) {
        qDebug().noquote() << "Error:" << reply->errorString();
        report("onDbResult", __LINE__, QStringLiteral("Error:") + reply->errorString());
        fail();
        return;
    }
    archiveData = reply->readAll();
    emit downloaded();
}

void DatabaseUpdater::unzipFinished()
{
    const QString unpacked = unpackedPath(databasePath);
    bool replacedOld = unzipWatcher->result();
    if (replacedOld) {
        // A query during the unpacking opens the base again, and Windows renames
        // no file that is open; the next query opens the new one.
        DrugDatabase::closeDatabase();
        replacedOld = replaceFile(unpacked, databasePath);
        if (!replacedOld)
            QFile::remove(unpacked);
    }
    archiveData.clear();
    newVersionAvailable = false;

    if (replacedOld) {
        // Every later check asks with the new base's version; with the old one
        // it would download the same base again each time.
        setLocalVersion(DrugDatabase::dataVersion());
        emit replaced();
        return;
    }
    report("unzipFinished", __LINE__, QStringLiteral("Unzip error"));
    fail();
}

void DatabaseUpdater::updateTimerElapsed()
{
    // Counted anew each time, so that a change to or from summer time keeps the check at 03:00.
    updateTimer.start(int(msecsToNextCheck(QDateTime::currentDateTime())));
    check();
}

void DatabaseUpdater::fail()
{
    qWarning().noquote() << "DatabaseUpdater error";
    emit error();
}
