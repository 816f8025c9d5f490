#include "utils/sentrydsn.h"

#include <QTest>

// The keys reach the service in the auth header that the Raven test reads; here
// the address the events go to.
class TestSentryDsn : public QObject {
    Q_OBJECT

private slots:
    void parse_data()
    {
        QTest::addColumn<QString>("address"); // after the keys
        QTest::addColumn<QString>("storeUrl");

        QTest::newRow("port 9000 kept") << "http://sentry.corvane.pl:9000/16" << "http://sentry.corvane.pl:9000/api/16/store/";
        QTest::newRow("http without port") << "http://sentry.corvane.pl/16" << "http://sentry.corvane.pl/api/16/store/";
        QTest::newRow("explicit port 80 dropped") << "http://sentry.corvane.pl:80/16" << "http://sentry.corvane.pl/api/16/store/";
        QTest::newRow("nested path") << "https://sentry.corvane.pl/a/b/16" << "https://sentry.corvane.pl/a/b/api/16/store/";
    }

    void parse()
    {
        QFETCH(QString, address);
        SentryDsn parsed;
        QVERIFY(SentryDsn::parse(QString(address).insert(address.indexOf("//") + 2, "0123456789abcdef:fedcba98@"), &parsed));
        QTEST(parsed.storeUrl(), "storeUrl");
    }
};

QTEST_GUILESS_MAIN(TestSentryDsn)
#include "tst_sentrydsn.moc"
