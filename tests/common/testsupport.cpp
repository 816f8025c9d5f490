#include "testsupport.h"

#include "appdir.h"
#include "db/drugdatabase.h"
#include "mainwindow.h"
#include "simulator.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <sys/resource.h>

#include <csignal>
#endif

namespace TestSupport {

bool useDemoDatabase(const QString& dir)
{
    DrugDatabase::closeDatabase();
    setProgramDir(dir);
    const QString copy = QDir(dir).filePath(DrugDatabase::drugDatabaseName);
    QFile::remove(copy);
    return QFile::copy(QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName, copy);
}

std::unique_ptr<MainWindow> demoWindow(const QString& dir, Simulator& simulator)
{
    QStandardPaths::setTestModeEnabled(true);
    if (!useDemoDatabase(dir) || !simulator.startOfferingCurrent(DrugDatabase::dataVersion()))
        return nullptr;
    auto window = std::make_unique<MainWindow>(nullptr);
    return simulator.waitForStartupChecks() ? std::move(window) : nullptr;
}

bool waitWhileProgressing(const std::function<bool()>& done, const std::function<qint64()>& progress, int stallMs)
{
    qint64 last = progress();
    QElapsedTimer sinceProgress;
    sinceProgress.start();
    while (!done()) {
        if (sinceProgress.hasExpired(stallMs))
            return false;
        QTest::qWait(20);
        const qint64 now = progress();
        if (now != last) {
            last = now;
            sinceProgress.restart();
        }
    }
    return true;
}

QString drugSchema()
{
    return QStringLiteral(R"sql(
CREATE TABLE v (vid INTEGER, name TEXT, pid INTEGER, gid INTEGER, kind TEXT, dose TEXT, box TEXT,
                company TEXT, prices TEXT, iid INTEGER, leaflet TEXT, warns TEXT);
CREATE TABLE g (gid INTEGER, inn TEXT);
CREATE TABLE xp (id INTEGER, name TEXT);
CREATE TABLE ve (vid INTEGER, ekd TEXT);
CREATE TABLE vm (vid INTEGER, mid INTEGER);
CREATE TABLE m (id INTEGER, name TEXT);
CREATE TABLE postac_match (postac TEXT, match_ix INTEGER);
CREATE TABLE xs (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE d (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE x (id INTEGER, descr TEXT);
CREATE TABLE i (id INTEGER, descr TEXT);
CREATE TABLE z (gid INTEGER, caption TEXT, value TEXT);
CREATE TABLE w (id INTEGER, parent_id INTEGER, name TEXT, descr TEXT);
CREATE TABLE food (wid INTEGER);
CREATE TABLE vg (id INTEGER, version_id INTEGER, kind_id INTEGER, date TEXT, path TEXT);
CREATE TABLE gk (id INTEGER, name TEXT, descr TEXT);
CREATE TABLE o (id INTEGER, xkey TEXT, xvalue TEXT);
CREATE TABLE o_url (oid INTEGER, url TEXT);
CREATE TABLE gb (oid INTEGER, gid INTEGER);
CREATE TABLE pharmacy (id INTEGER, name TEXT, street TEXT, zip TEXT, city TEXT, phone TEXT, email TEXT, www TEXT);
CREATE TABLE pharmacy_open_hours_type (id INTEGER, name TEXT, name_pl TEXT);
CREATE TABLE pharmacy_open_hours (pharmacy_id INTEGER, type_id INTEGER, start_hour TEXT, end_hour TEXT);
CREATE TABLE rec_group (id INTEGER, name TEXT);
CREATE TABLE rec_drug (id INTEGER, name TEXT, id_group INTEGER, synon TEXT);
CREATE TABLE rec_recipe (id INTEGER, id_drug INTEGER, name TEXT, realization TEXT, use_text TEXT, comments TEXT);
CREATE TABLE rec_substance (id INTEGER, name TEXT, effect TEXT);
CREATE TABLE rec_connection (id INTEGER, id_rec INTEGER, id_sub INTEGER, amount TEXT, additional TEXT, note TEXT);
CREATE TABLE cfg (key TEXT, val TEXT);
)sql");
}

bool buildDatabase(const QString& path, const QString& sql)
{
    static int serial = 0;
    const QString connectionName = QStringLiteral("fixture-%1").arg(++serial);
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(path);
        ok = db.open();
        const QStringList statements = sql.split(QRegularExpression(QStringLiteral(";\\s*\\n")));
        for (const QString& statement : statements) {
            if (!ok || statement.trimmed().isEmpty())
                continue;
            QSqlQuery query(db);
            if (!query.exec(statement)) {
                qWarning() << query.lastError().text() << statement;
                ok = false;
            }
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return ok;
}

bool limitFileSize(qint64 bytes)
{
#ifdef Q_OS_UNIX
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit {};
    if (getrlimit(RLIMIT_FSIZE, &limit) != 0)
        return false;
    limit.rlim_cur = bytes < 0 ? limit.rlim_max : rlim_t(bytes);
    return setrlimit(RLIMIT_FSIZE, &limit) == 0;
#else
    return bytes < 0;
#endif
}

bool waitForHiddenTabs(QObject* root)
{
    auto* timer = root->findChild<QTimer*>(QStringLiteral("hiddenTabsTimer"));
    // The page takes a scanned drug on queued signals: they are delivered
    // first, on a slow build too, so that the timer is running if it will.
    QCoreApplication::sendPostedEvents();
    return timer && QTest::qWaitFor([timer] { return !timer->isActive(); });
}

} // namespace TestSupport
