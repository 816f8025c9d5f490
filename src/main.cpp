#include "appdir.h"
#include "applicationsetup.h"
#include "loghandler.h"
#include "mainwindow.h"
#include "sharppixmap.h"
#include "urls.h"
#include "utils/appkey.h"
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

void setUpTempDirAndLogPattern()
{
    const QString tempPath = AppDir::tempDir();
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

// True when a running instance takes a connection on the key, which is all the
// message it needs to come forward.
bool instanceAnswers()
{
    QLocalSocket socket;
    socket.connectToServer(AppDir::instanceKey(), QIODevice::ReadWrite);
    // An instance whose queue is full lets a connection wait instead of refusing it.
    return socket.isOpen() || socket.waitForConnected(1000);
}

enum class Listening { Listening, AnotherInstance, Failed };

// Listens on the instance key. Building the window takes a while, so another
// instance may have come up meanwhile: it is asked once more right before
// listening, and again before a socket file that is in the way is removed as
// one left behind by a killed instance.
Listening listenForLaterStarts(QLocalServer& server)
{
    if (instanceAnswers())
        return Listening::AnotherInstance;
    if (server.listen(AppDir::instanceKey()))
        return Listening::Listening;
    if (instanceAnswers())
        return Listening::AnotherInstance;
    QLocalServer::removeServer(AppDir::instanceKey());
    if (server.listen(AppDir::instanceKey()))
        return Listening::Listening;
    qDebug() << "D/main | can't listen on the instance key:" << server.errorString();
    return Listening::Failed;
}

} // namespace

int main(int argc, char* argv[])
{
    ApplicationSetup::beforeApplication();
    QApplication app(argc, argv);

    // Where the base, the log and the rest live is settled before the first
    // line is written: an installed program writes only in the user's data folder.
    AppDir::choose();
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

    QPixmap splashImage = sharpPixmap(QStringLiteral(":/icons/splash"));
    QSplashScreen splash(splashImage);
    splash.show();

    if (instanceAnswers())
        return 0;

    AppDir::provideStarterDatabase();
    MainWindow window(nullptr);

    QLocalServer server;
    QObject::connect(&server, &QLocalServer::newConnection, &window, [&server, &window] {
        // Each connection is taken and dropped: left in the server's queue they
        // would fill it, and later starts would no longer get through.
        while (QLocalSocket* connection = server.nextPendingConnection()) {
            connection->abort();
            connection->deleteLater();
        }
        raiseMainWindow(&window);
    });
    if (listenForLaterStarts(server) == Listening::AnotherInstance)
        return 0;

    QCoreApplication::setOrganizationName(QStringLiteral("Corvane"));
    QCoreApplication::setOrganizationDomain(organizationDomain);
    QCoreApplication::setApplicationName(QStringLiteral("Quillard"));
    QCoreApplication::setApplicationVersion(programVersion);
    // The installation's key goes with every record, so it stands before anything is sent.
    ensureAppKey();

    setUpTempDirAndLogPattern();

    MainWindow::instance()->display();
    splash.finish(MainWindow::instance());

    return app.exec();
}
