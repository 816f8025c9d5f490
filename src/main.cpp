#include "appdir.h"
#include "loghandler.h"
#include "mainwindow.h"
#include "settings/appkey.h"
#include "urls.h"
#include "utils/raven.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QLibraryInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLocale>
#include <QSplashScreen>
#include <QTranslator>

namespace {

const QString applicationVersion = QStringLiteral("1.6.5.0");
const QString instanceKey = QStringLiteral("CorvaneQuillardKey");

void setUpTempDirAndLogPattern()
{
    const QString tempPath = programDir() + QStringLiteral("/temp/");
    if (!QDir(tempPath).exists())
        QDir().mkpath(tempPath);
    qSetMessagePattern(
        QStringLiteral("%{time hh:mm:ss.zzz} | %{type} | %{file}(%{line}) in %{function}: %{message}"));
}

// Brings the running window to the front for a second start. activateWindow()
// alone does not lift a hidden or covered window, hence the stay-on-top toggle.
void raiseMainWindow(MainWindow* window)
{
    window->setWindowFlags(window->windowFlags() | Qt::WindowStaysOnTopHint);
    window->showNormal();
    window->setWindowFlags(window->windowFlags() & ~Qt::WindowStaysOnTopHint);
    window->showNormal();
    window->activateWindow();
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication app(argc, argv);

    LogHandler::setStream(LogHandler::openLogStream());
    qInstallMessageHandler(LogHandler::messageHandler);
    qInfo() << "*** App start ***";

    QTranslator qtTranslator;
    if (qtTranslator.load(QLocale::system(), QStringLiteral("qt"), QStringLiteral("_"),
                          QLibraryInfo::location(QLibraryInfo::TranslationsPath), QString())) {
        qDebug() << "qtTranslator ok";
        app.installTranslator(&qtTranslator);
    }
    QTranslator qtBaseTranslator;
    if (qtBaseTranslator.load(QStringLiteral("qtbase_") + QLocale::system().name(),
                              QLibraryInfo::location(QLibraryInfo::TranslationsPath), QString(), QString())) {
        qDebug() << "qtBaseTranslator ok";
        app.installTranslator(&qtBaseTranslator);
    }

    Raven::setUpForProgram(sentryDsn);

    QPixmap splashImage(QStringLiteral(":/icons/splash"));
    QSplashScreen splash(splashImage);
    splash.show();

    // A connection alone tells the running instance to come forward.
    auto* socket = new QLocalSocket;
    socket->connectToServer(instanceKey, QIODevice::ReadWrite);
    if (socket->isOpen()) {
        socket->close();
        socket->deleteLater();
        return 0;
    }
    socket->deleteLater();

    MainWindow window(nullptr);

    QLocalServer server;
    QObject::connect(&server, &QLocalServer::newConnection, &window, [&window] { raiseMainWindow(&window); });
    // Nobody answered on the key, so a socket file left by a crashed run is stale.
    QLocalServer::removeServer(instanceKey);
    server.listen(instanceKey);

    QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
    QCoreApplication::setOrganizationDomain(organizationDomain);
    QCoreApplication::setApplicationName(QStringLiteral("Quillard"));
    QCoreApplication::setApplicationVersion(applicationVersion);
    // The installation's key goes with every record, so it stands before anything is sent.
    ensureAppKey();

    setUpTempDirAndLogPattern();

    MainWindow::instance()->display();
    splash.finish(MainWindow::instance());

    return app.exec();
}
