#include "simulator.h"
#include "utils/connectivity.h"
#include "utils/networklimits.h"

#include <QStandardPaths>
#include <QTest>

class TestConnectivity : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(simulator.start());
    }

    void init()
    {
        QVERIFY(simulator.reset());
    }

    void cleanup()
    {
        NetworkLimits::setTransferTimeout(30000);
    }

    void internetConnection_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<bool>("refused");
        QTest::addColumn<bool>("online");

        QTest::newRow("web site answers") << "" << false << true;
        QTest::newRow("redirected to a page") << "302" << false << true;
        QTest::newRow("error page with a body") << "404" << false << true;
        QTest::newRow("nobody listening") << "" << true << false;
        QTest::newRow("silent server") << "noanswer" << false << false;
        QTest::newRow("redirect loop") << "302loop" << false << false;
    }

    void internetConnection()
    {
        QFETCH(QString, fault);
        QFETCH(bool, refused);

        NetworkLimits::setTransferTimeout(1000);
        if (!fault.isEmpty())
            QVERIFY(simulator.setFault(QStringLiteral("/"), fault, QStringLiteral("/chpl/")));
        const QString url = refused ? QStringLiteral("http://127.0.0.1:1/") : simulator.baseUrl() + QStringLiteral("/");

        const bool online = Connectivity::internetConnection(url);
        QTEST(online, "online");
    }

private:
    Simulator simulator;
};

QTEST_GUILESS_MAIN(TestConnectivity)
#include "tst_connectivity.moc"
