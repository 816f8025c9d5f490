#include "simulator.h"

#include "buildconfig.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QJsonDocument>
#include <QAtomicInt>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>

#include <csignal>
#endif

namespace {

// Main windows write this line at the end of each start-up pass that got
// through its checks; the handler counts it and passes every line on.
QAtomicInt finishedStartupPasses;
QtMessageHandler nextHandler = nullptr;

void countStartupPasses(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (message.contains(QLatin1String("D/MainWindow::Init | Finnished checks")))
        finishedStartupPasses.fetchAndAddOrdered(1);
    if (nextHandler != nullptr)
        nextHandler(type, context, message);
}

void watchStartupPasses()
{
    static const bool installed = [] {
        nextHandler = qInstallMessageHandler(countStartupPasses);
        return true;
    }();
    Q_UNUSED(installed)
}

constexpr int startTimeoutMs = 15000;
constexpr int controlTimeoutMs = 10000;
constexpr int stopTimeoutMs = 5000;

QString encoded(const QString& value)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(value));
}

// Archives of the offered database are built here; one folder per fixture, so
// that two simulators of one test never share their files.
QString stateDir(const Simulator* simulator)
{
    return QDir::tempPath() + QStringLiteral("/quillard-simulator-%1-%2")
                                  .arg(QCoreApplication::applicationPid())
                                  .arg(reinterpret_cast<quintptr>(simulator), 0, 16);
}

} // namespace

void Simulator::Process::setupChildProcess()
{
#ifdef Q_OS_LINUX
    // Runs in the child before exec; the simulator stops cleanly on SIGTERM.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

Simulator::~Simulator()
{
    stop();
}

bool Simulator::start(int port, const QString& databasePath)
{
    stop();
    watchStartupPasses();
    seenStartupPasses = finishedStartupPasses.loadAcquire();

    const QString database = databasePath.isEmpty()
        ? QStringLiteral(QUILLARD_BINARY_DIR "/bin/corvane_quillard_desktop.sqlite3")
        : databasePath;
    const QString state = stateDir(this);
    QDir().mkpath(state);

    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral("python3"),
        { QStringLiteral(QUILLARD_SOURCE_DIR "/tools/simulator/simulator.py"),
            QStringLiteral("--port"), QString::number(port),
            QStringLiteral("--db"), database,
            QStringLiteral("--state-dir"), state });
    if (!process.waitForStarted(startTimeoutMs)) {
        qWarning("Simulator: python3 did not start: %s", qPrintable(process.errorString()));
        return false;
    }

    const QDeadlineTimer deadline(startTimeoutMs);
    while (!deadline.hasExpired() && process.state() == QProcess::Running) {
        while (process.canReadLine()) {
            const QString line = QString::fromUtf8(process.readLine()).trimmed();
            if (line.startsWith(QLatin1String("LISTENING "))) {
                bool ok = false;
                const int listening = line.mid(10).toInt(&ok);
                if (ok && listening > 0) {
                    listeningPort = listening;
                    return true;
                }
            }
        }
        process.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime())));
    }
    qWarning("Simulator: no LISTENING line within %d ms", startTimeoutMs);
    stop();
    return false;
}

void Simulator::stop()
{
    if (process.state() != QProcess::NotRunning) {
        process.terminate();
        if (!process.waitForFinished(stopTimeoutMs)) {
            process.kill();
            process.waitForFinished(stopTimeoutMs);
        }
    }
    listeningPort = 0;
    QDir(stateDir(this)).removeRecursively();
}

bool Simulator::startOfferingCurrent(const QString& dataVersion)
{
    return start(QUILLARD_SIMULATOR_PORT) && setValue(QStringLiteral("data_version"), dataVersion);
}

bool Simulator::waitForStartupChecks()
{
    // Usage records probe the connection as well, so the last pass is told by
    // its own log line rather than by the probes that the simulator sees.
    const QDeadlineTimer deadline(20000);
    while (finishedStartupPasses.loadAcquire() <= seenStartupPasses) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    seenStartupPasses = finishedStartupPasses.loadAcquire();
    return true;
}

QString Simulator::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(listeningPort);
}

bool Simulator::setFault(const QString& key, const QString& mode, const QString& target, double seconds)
{
    QString request = QStringLiteral("/_sim/fault?key=") + encoded(key) + QStringLiteral("&mode=") + encoded(mode);
    if (!target.isEmpty())
        request += QStringLiteral("&target=") + encoded(target);
    if (seconds > 0)
        request += QStringLiteral("&seconds=") + QString::number(seconds, 'f', 3);
    return control(request).contains("\"ok\"");
}

bool Simulator::setValue(const QString& key, const QString& value)
{
    return control(QStringLiteral("/_sim/set?key=") + encoded(key) + QStringLiteral("&value=") + encoded(value))
        .contains("\"ok\"");
}

bool Simulator::reset()
{
    return control(QStringLiteral("/_sim/reset")).contains("\"ok\"");
}

QJsonArray Simulator::records(const QString& path)
{
    return QJsonDocument::fromJson(control(QStringLiteral("/_sim/records?path=") + encoded(path))).array();
}

QByteArray Simulator::control(const QString& pathAndQuery)
{
    if (listeningPort == 0)
        return {};

    QNetworkAccessManager manager;
    // A proxy from the environment must not stand between a test and 127.0.0.1.
    manager.setProxy(QNetworkProxy::NoProxy);
    QNetworkRequest request(QUrl(baseUrl() + pathAndQuery));
    QNetworkReply* reply = manager.get(request);

    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(controlTimeoutMs);
    loop.exec();

    QByteArray answer;
    if (!reply->isFinished()) {
        qWarning("Simulator: no answer to %s", qPrintable(pathAndQuery));
        reply->abort();
    } else if (reply->error() != QNetworkReply::NoError) {
        qWarning("Simulator: %s failed: %s", qPrintable(pathAndQuery), qPrintable(reply->errorString()));
    } else {
        answer = reply->readAll();
    }
    delete reply;
    return answer;
}
