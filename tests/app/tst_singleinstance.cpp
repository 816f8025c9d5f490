#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// Two real processes of the program: the second start must reach the first and
// leave without building a window of its own.
class tst_SingleInstance : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void secondStartLeavesWithZero();
    void cleanupTestCase();

private:
    QProcess* startProgram();

    QTemporaryDir dir;
    QString program;
    QList<QProcess*> processes;
};

void tst_SingleInstance::initTestCase()
{
    QVERIFY(dir.isValid());
    // A copy of the program in a folder of its own, with a small database
    // beside it, as an installation has it.
    program = dir.filePath(QStringLiteral("quillard"));
    QVERIFY(QFile::copy(QStringLiteral(QUILLARD_BINARY_DIR "/bin/quillard"), program));
    QVERIFY(TestSupport::buildDatabase(dir.filePath(QStringLiteral("corvane_quillard_desktop.sqlite3")),
                                       QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT);\n"
                                                      "INSERT INTO cfg VALUES ('data_version', '1700000000');\n")));

    QLocalSocket probe;
    probe.connectToServer(QStringLiteral("CorvaneQuillardKey"));
    if (probe.waitForConnected(200))
        QSKIP("Another Quillard is running for this user; the test needs the instance key to itself.");
}

QProcess* tst_SingleInstance::startProgram()
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

void tst_SingleInstance::secondStartLeavesWithZero()
{
    QProcess* first = startProgram();
    QVERIFY(first->waitForStarted());

    // The first instance is up once it listens on the instance key.
    QTRY_VERIFY_WITH_TIMEOUT(
        [] {
            QLocalSocket socket;
            socket.connectToServer(QStringLiteral("CorvaneQuillardKey"));
            return socket.waitForConnected(100);
        }(),
        20000);

    QProcess* second = startProgram();
    QVERIFY(second->waitForFinished(20000));
    QCOMPARE(second->exitStatus(), QProcess::NormalExit);
    QCOMPARE(second->exitCode(), 0);
    const QByteArray secondLog = second->readAllStandardError();
    QVERIFY2(secondLog.contains("*** App start ***"), secondLog.constData());
    QVERIFY2(!secondLog.contains("D/MainWindow::Init"), secondLog.constData());

    QCOMPARE(first->state(), QProcess::Running);
}

void tst_SingleInstance::cleanupTestCase()
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

QTEST_GUILESS_MAIN(tst_SingleInstance)
#include "tst_singleinstance.moc"
