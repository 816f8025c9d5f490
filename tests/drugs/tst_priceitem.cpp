#include "drugs/priceitem.h"
#include "buildconfig.h"

#include <QStandardPaths>
#include <QtTest>

namespace {

DrugPrice makePrice(const QString& levelName, const QString& payment, const QString& scopeName,
                    const QString& scopeDescr, const QString& offLabelDescr)
{
    DrugPrice price;
    price.level = {QStringLiteral("7"), levelName, QStringLiteral("Ryczałt")};
    price.payment = payment;
    price.scope = {QStringLiteral("12"), scopeName, scopeDescr};
    price.offLabel = {QStringLiteral("3"), offLabelDescr};
    return price;
}

// The link as the pharmacist's browser gets it: the file name unencoded, twice.
QString anchor(const QString& fileName)
{
    return QStringLiteral("<a href=\"" QUILLARD_ATTACHMENTS_URL "/mobile/pdf/index.php?f=") + fileName
        + QStringLiteral("\">") + fileName + QStringLiteral("</a>");
}

} // namespace

class TestPriceItem : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
    }

    void valueText_data()
    {
        QTest::addColumn<QString>("payment");
        QTest::addColumn<QString>("expected");

        QTest::newRow("comma kept") << "12,50" << "12,50 zł";
        QTest::newRow("capital X") << "X" << "bd.";
        QTest::newRow("small x") << "x" << "bd.";
        QTest::newRow("dash") << "-" << "bd.";
        QTest::newRow("empty") << "" << "bd.";
        QTest::newRow("one blank") << " " << "bd.";
        QTest::newRow("word") << "bezpłatny" << "bezpłatny";
    }

    void valueText()
    {
        QFETCH(QString, payment);
        QTEST(PriceItem::valueText(payment), "expected");
    }

    void descriptionText_data()
    {
        QTest::addColumn<QString>("levelName");
        QTest::addColumn<QString>("scopeName");
        QTest::addColumn<QString>("scopeDescr");
        QTest::addColumn<QString>("offLabelDescr");
        QTest::addColumn<QString>("expected");

        const QString allIndications
            = QStringLiteral("Refundacja we wszystkich zarejestrowanych wskazaniach (patrz wskazania wg ChPL).");
        const QString offLabel = QStringLiteral("<br/>Wskazania pozarejestracyjne:<br/>");

        QTest::newRow("full price shows nothing")
            << "100%" << "Program lekowy B.12" << "B.12.pdf" << "Brak wskazań" << "";
        QTest::newRow("all indications, none off-label")
            << "30%" << allIndications << "" << "Brak wskazań" << allIndications;
        QTest::newRow("off-label indications")
            << "30%" << "Nowotwory" << "" << "Zapobieganie wymiotom"
            << QStringLiteral("Nowotwory") + offLabel + QStringLiteral("Zapobieganie wymiotom");
        QTest::newRow("empty off-label record still gives the block")
            << "30%" << "Nowotwory" << "" << "" << QStringLiteral("Nowotwory") + offLabel;
        QTest::newRow("drug programme links its own file")
            << "bezpłatny" << "Program lekowy B.12" << "B.12.pdf" << "Brak wskazań"
            << QStringLiteral("Program lekowy B.12<br/>Załącznik:") + anchor(QStringLiteral("B.12.pdf"));
        QTest::newRow("chemotherapy links the off-label file")
            << "bezpłatny" << "Chemioterapia" << "C.1.pdf" << "C.52.pdf"
            << QStringLiteral("Chemioterapia<br/>Załącznik:") + anchor(QStringLiteral("C.52.pdf"));
        QTest::newRow("both words count as drug programme")
            << "bezpłatny" << "Chemioterapia w ramach programu lekowego; program lekowy" << "B.8.pdf" << "C.52.pdf"
            << QStringLiteral("Chemioterapia w ramach programu lekowego; program lekowy<br/>Załącznik:")
                + anchor(QStringLiteral("B.8.pdf"));
        QTest::newRow("no data stops after the scope")
            << "bezpłatny" << "Program lekowy B.12" << "B.12.pdf" << "Brak danych" << "Program lekowy B.12";
    }

    void descriptionText()
    {
        QFETCH(QString, levelName);
        QFETCH(QString, scopeName);
        QFETCH(QString, scopeDescr);
        QFETCH(QString, offLabelDescr);

        const DrugPrice price = makePrice(levelName, QStringLiteral("3,20"), scopeName, scopeDescr, offLabelDescr);
        QTEST(PriceItem::descriptionText(price), "expected");
    }
};

QTEST_MAIN(TestPriceItem)
#include "tst_priceitem.moc"
