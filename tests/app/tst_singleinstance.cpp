#include "testsupport.h"

#include "appdir.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

// Real processes of the program: there is only ever one, and every later start
// reaches it, however many there are and however they come.
class tst_SingleInstance : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        // A copy of the program in a folder of its own, with a small database
        // beside it, as an installation has it.
        program = dir.filePath(QStringLiteral("quillard"));
        QVERIFY(QFile::copy(QStringLiteral(QUILLARD_BINARY_DIR "/bin/quillard"), program));
        QVERIFY(TestSupport::buildDatabase(dir.filePath(QStringLiteral("corvane_quillard_desktop.sqlite3")),
                                           QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT);\n"
                                                          "INSERT INTO cfg VALUES ('data_version', '1700000000');\n")));
        // The instance key's socket file lives in the temporary folder: one of the
        // test's own keeps a user's running program out and leaves nothing behind.
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("tmp")));
        qputenv("TMPDIR", QFile::encodeName(dir.filePath(QStringLiteral("tmp"))));
    }

    void startsAtTheSameMomentLeaveOneRunning()
    {
        // Regression: two starts at the same moment both opened a window.
        const QList<QProcess*> starts{startProgram(), startProgram(), startProgram()};
        for (QProcess* start : starts)
            QVERIFY(start->waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(instanceListens(), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(std::count_if(starts.cbegin(), starts.cend(),
                                                [](QProcess* start) { return start->state() == QProcess::Running; }),
                                  qsizetype(1), 20000);
        for (QProcess* start : starts) {
            if (start->state() == QProcess::NotRunning) {
                QCOMPARE(start->exitStatus(), QProcess::NormalExit);
                QCOMPARE(start->exitCode(), 0);
            }
        }
    }

    void manyLaterStartsAllGetThrough()
    {
        QProcess* first = runningInstance();
        QVERIFY(first);

        // Regression: connections left in the server's queue filled it after about
        // thirty starts; then the window stopped coming forward and, later, a
        // second instance opened. Each connection must be taken and dropped.
        for (int start = 0; start < 40; ++start) {
            QLocalSocket socket;
            socket.connectToServer(AppDir::instanceKey());
            QVERIFY2(socket.waitForConnected(5000), qPrintable(QString::number(start)));
            QVERIFY2(socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(5000),
                     qPrintable(QString::number(start)));
        }

        QProcess* second = startProgram();
        QVERIFY(second->waitForFinished(20000));
        QCOMPARE(second->exitStatus(), QProcess::NormalExit);
        QCOMPARE(second->exitCode(), 0);
        const QByteArray secondLog = second->readAllStandardError();
        QVERIFY2(secondLog.contains("*** App start ***"), secondLog.constData());
        QVERIFY2(!secondLog.contains("D/MainWindow::Init"), secondLog.constData());
        QCOMPARE(first->state(), QProcess::Running);
    }

    void socketFileOfAKilledInstance()
    {
        QProcess* killed = runningInstance();
        QVERIFY(killed);
        killed->kill();
        QVERIFY(killed->waitForFinished(5000));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("tmp/") + AppDir::instanceKey())));

        // The file left behind must not keep the next start from listening.
        QProcess* next = startProgram();
        QVERIFY(next->waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(instanceListens(), 20000);
        QCOMPARE(next->state(), QProcess::Running);
    }

    void cleanupTestCase()
    {
        for (QProcess* process : qAsConst(processes)) {
            if (process->state() != QProcess::NotRunning) {
                process->terminate();
                if (!process->waitForFinished(5000))
                    process->kill();
                process->waitForFinished(5000);
            }
        }
    }

private:
    QProcess* startProgram()
    {
        auto* process = new QProcess(this);
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("QTDIR"), QStringLiteral("1")); // log to standard error
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        process->setProcessEnvironment(env);
        process->setWorkingDirectory(dir.path());
        process->start(program, {});
        processes << process;
        return process;
    }

    static bool instanceListens()
    {
        QLocalSocket socket;
        socket.connectToServer(AppDir::instanceKey());
        return socket.waitForConnected(100);
    }

    QProcess* runningInstance() const
    {
        const auto running = std::find_if(processes.cbegin(), processes.cend(),
                                          [](QProcess* process) { return process->state() == QProcess::Running; });
        return running == processes.cend() ? nullptr : *running;
    }

    QTemporaryDir dir;
    QString program;
    QList<QProcess*> processes;
};

QTEST_GUILESS_MAIN(tst_SingleInstance)
#include "tst_singleinstance.moc"
