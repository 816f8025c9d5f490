#include "utils/responseenvelope.h"

#include <QTest>

class TestResponseEnvelope : public QObject {
    Q_OBJECT

private slots:
    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("success");
        QTest::addColumn<QString>("message");

        QTest::newRow("accepted") << R"({"status":"success","message":""})" << true << "";
        QTest::newRow("capitalised status is no success") << R"({"status":"Success","message":""})" << false << "";
        QTest::newRow("rejected with a Polish reason")
            << QString::fromUtf8(R"({"status":"error","message":"Nieprawidłowe dane"})") << false
            << QString::fromUtf8("Nieprawidłowe dane");
        QTest::newRow("no status") << R"({"message":"x"})" << false << "x";
        QTest::newRow("not JSON") << "{not json" << false << "";
    }

    void parse()
    {
        QFETCH(QString, text);

        const ResponseEnvelope envelope = ResponseEnvelope::parse(text);
        QTEST(envelope.success, "success");
        QTEST(envelope.message, "message");
    }
};

QTEST_GUILESS_MAIN(TestResponseEnvelope)
#include "tst_responseenvelope.moc"
