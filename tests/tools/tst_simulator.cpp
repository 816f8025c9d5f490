#include "simulator.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace {

bool listens(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), quint16(port));
    return socket.waitForConnected(500);
}

} // namespace

// The tests' simulator fixture: the simulator process must not outlive the
// test that started it.
class tst_Simulator : public QObject {
    Q_OBJECT

private slots:
    void endsWithACrashedTest()
    {
    #ifndef Q_OS_LINUX
        QSKIP("Only Linux ends a child with its parent.");
    #endif
        // Regression: a test that crashed left its simulator running, on the port
        // and on the test's standard error, so CTest waited for it until the timeout.
        // The crashed fixture leaves its state folder behind; it goes with this one.
        QTemporaryDir temp;
        QVERIFY(temp.isValid());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), temp.path());
        QProcess crashing;
        crashing.setProcessEnvironment(environment);
        crashing.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--crash-with-simulator") });
        QVERIFY(crashing.waitForFinished(20000));
        QCOMPARE(crashing.exitStatus(), QProcess::CrashExit);
        const QByteArray output = crashing.readAllStandardOutput().trimmed();
        QVERIFY2(output.startsWith("PORT "), output.constData());
        const int port = output.mid(5).toInt();
        QVERIFY(port > 0);
        QTRY_VERIFY_WITH_TIMEOUT(!listens(port), 10000);
    }
};

// The crashing test: starts a simulator, tells its port and aborts.
static int crashWithSimulator()
{
    Simulator simulator;
    if (!simulator.start())
        return 1;
    std::printf("PORT %d\n", simulator.port());
    std::fflush(stdout);
    std::abort();
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--crash-with-simulator") == 0)
        return crashWithSimulator();
    tst_Simulator test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_simulator.moc"
