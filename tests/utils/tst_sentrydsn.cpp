#include "utils/sentrydsn.h"

#include <QTest>

class TestSentryDsn : public QObject {
    Q_OBJECT

private slots:
    void parse_data();
    void parse();
};

namespace {

const QString keys = QStringLiteral("0123456789abcdef0123456789abcdef:fedcba9876543210fedcba9876543210");

} // namespace

void TestSentryDsn::parse_data()
{
    QTest::addColumn<QString>("dsn");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("projectId");
    QTest::addColumn<QString>("storeUrl");

    QTest::newRow("port 9000 kept") << QStringLiteral("http://%1@sentry.corvane.pl:9000/16").arg(keys)
                                    << "http" << "sentry.corvane.pl:9000" << "" << "16"
                                    << "http://sentry.corvane.pl:9000/api/16/store/";
    QTest::newRow("http without port") << QStringLiteral("http://%1@sentry.corvane.pl/16").arg(keys)
                                       << "http" << "sentry.corvane.pl" << "" << "16"
                                       << "http://sentry.corvane.pl/api/16/store/";
    QTest::newRow("explicit port 80 dropped") << QStringLiteral("http://%1@sentry.corvane.pl:80/16").arg(keys)
                                              << "http" << "sentry.corvane.pl" << "" << "16"
                                              << "http://sentry.corvane.pl/api/16/store/";
    QTest::newRow("nested path") << QStringLiteral("https://%1@sentry.corvane.pl/a/b/16").arg(keys)
                                 << "https" << "sentry.corvane.pl" << "/a/b" << "16"
                                 << "https://sentry.corvane.pl/a/b/api/16/store/";
}

void TestSentryDsn::parse()
{
    QFETCH(QString, dsn);

    SentryDsn parsed;
    QVERIFY(SentryDsn::parse(dsn, &parsed));
    QTEST(parsed.protocol, "protocol");
    QCOMPARE(parsed.publicKey, QStringLiteral("0123456789abcdef0123456789abcdef"));
    QCOMPARE(parsed.secretKey, QStringLiteral("fedcba9876543210fedcba9876543210"));
    QTEST(parsed.host, "host");
    QTEST(parsed.path, "path");
    QTEST(parsed.projectId, "projectId");
    QTEST(parsed.storeUrl(), "storeUrl");
}

QTEST_GUILESS_MAIN(TestSentryDsn)
#include "tst_sentrydsn.moc"
