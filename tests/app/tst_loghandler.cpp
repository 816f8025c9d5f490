#include "loghandler.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cstdio>

class tst_LogHandler : public QObject {
    Q_OBJECT

private slots:
    void lineFormat_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("line");
        QTest::addColumn<QByteArray>("function");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("expected");

        // Call sites pass no context in release builds: file and function are null.
        QTest::newRow("debug without context")
            << int(QtDebugMsg) << QByteArray() << 0 << QByteArray() << QStringLiteral("D/MainWindow::Init | No DB")
            << QByteArray("2026-03-04 05:06:07 Debug: [:0, ] D/MainWindow::Init | No DB\n");
        QTest::newRow("info with context")
            << int(QtInfoMsg) << QByteArray("main.cpp") << 42 << QByteArray("main") << QStringLiteral("*** App start ***")
            << QByteArray("2026-03-04 05:06:07 Info: [main.cpp:42, main] *** App start ***\n");
        QTest::newRow("warning")
            << int(QtWarningMsg) << QByteArray() << 0 << QByteArray() << QStringLiteral("DatabaseUpdater error")
            << QByteArray("2026-03-04 05:06:07 Warning: [:0, ] DatabaseUpdater error\n");
        QTest::newRow("polish text in the local encoding")
            << int(QtDebugMsg) << QByteArray() << 0 << QByteArray() << QStringLiteral("Zażółć gęślą jaźń")
            << QByteArray("2026-03-04 05:06:07 Debug: [:0, ] ") + QStringLiteral("Zażółć gęślą jaźń").toLocal8Bit()
                + QByteArray("\n");
        QTest::newRow("a message of two lines keeps one prefix")
            << int(QtDebugMsg) << QByteArray() << 0 << QByteArray() << QStringLiteral("first\nsecond")
            << QByteArray("2026-03-04 05:06:07 Debug: [:0, ] first\nsecond\n");
    }

    void lineFormat()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, file);
        QFETCH(int, line);
        QFETCH(QByteArray, function);
        QFETCH(QString, message);

        const QMessageLogContext context(file.isNull() ? nullptr : file.constData(), line,
                                         function.isNull() ? nullptr : function.constData(), "default");
        const QDateTime time(QDate(2026, 3, 4), QTime(5, 6, 7));
        QTEST(LogHandler::formatLine(QtMsgType(type), context, message, time), "expected");
    }

    void linesOfManyThreadsStayWhole()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString path = dir.filePath(QStringLiteral("log.log"));
        FILE* stream = std::fopen(QFile::encodeName(path).constData(), "a");
        QVERIFY(stream);
        LogHandler::setStream(stream);
        QtMessageHandler previous = qInstallMessageHandler(LogHandler::messageHandler);

        const int threads = 4;
        const int linesPerThread = 500;
        QList<QThread*> workers;
        for (int t = 0; t < threads; ++t) {
            workers << QThread::create([t] {
                for (int i = 0; i < linesPerThread; ++i)
                    qDebug().noquote() << QStringLiteral("thread %1 line %2 ").arg(t).arg(i) + QString(200, QLatin1Char('x'));
            });
            workers.last()->start();
        }
        for (QThread* worker : workers) {
            QVERIFY(worker->wait(30000));
            delete worker;
        }

        qInstallMessageHandler(previous);
        LogHandler::setStream(nullptr);
        std::fclose(stream);

        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        int written = 0;
        for (const QByteArray& line : lines) {
            if (line.isEmpty())
                continue;
            ++written;
            QVERIFY2(line.contains(" Debug: [:0, ] thread ") && line.endsWith(QByteArray(200, 'x')), line.constData());
        }
        QCOMPARE(written, threads * linesPerThread);
    }

    void unopenableLogLosesLinesSilently()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        // A folder named like the log can't be opened as a file.
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("log.log")));
        const QString previousDir = QDir::currentPath();
        QVERIFY(QDir::setCurrent(dir.path()));
        qputenv("QTDIR", "");
        FILE* stream = LogHandler::openLogStream();
        QDir::setCurrent(previousDir);
        QVERIFY(!stream);

        LogHandler::setStream(stream);
        QtMessageHandler previous = qInstallMessageHandler(LogHandler::messageHandler);
        qDebug() << "this line has nowhere to go";
        qInstallMessageHandler(previous);
    }
};

QTEST_GUILESS_MAIN(tst_LogHandler)
#include "tst_loghandler.moc"
