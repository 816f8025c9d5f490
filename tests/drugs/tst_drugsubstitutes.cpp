#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugsubstituteitem.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "testsupport.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

namespace {

// A drug whose refund rows are given as "levelId:payment" pairs; a level's
// name is its id.
Drug drugWithRows(const QString& vid, const QStringList& rows)
{
    Drug drug;
    drug.vid = vid;
    for (const QString& text : rows) {
        DrugPrice price;
        price.level.id = price.level.name = text.section(QLatin1Char(':'), 0, 0);
        price.payment = text.section(QLatin1Char(':'), 1);
        drug.priceList.append(price);
    }
    return drug;
}

QStringList vids(const QList<Drug>& drugs)
{
    QStringList result;
    for (const Drug& drug : drugs)
        result.append(drug.vid);
    return result;
}

// Packages of ibuprofen 10 mg: 1 is the one selected; 2, 3 and 4 are its
// substitutes; 6 has another substance and no substitutes. Which packages match
// is the database test's business; this one checks their order and timing.
const char fixtureSql[] = R"sql(
INSERT INTO g VALUES (100, 'Ibuprofenum'), (101, 'Paracetamolum');
INSERT INTO m VALUES (10, 'Ibuprofenum'), (11, 'Paracetamolum');
INSERT INTO postac_match VALUES ('tabl.', 1), ('tabl. powl.', 1);
INSERT INTO v VALUES
    (1, 'Ibum', 1, 100, 'tabl.', '10 mg', '20 szt.', 'Hasco', '-1|20,00|-1|-1|5|3,20|12|-1', '-1', '', ''),
    (2, 'Ibuprom', 1, 100, 'tabl. powl.', '10 mg', '20 szt.', 'USP', '-1|15,50|-1|-1', '-1', '', ''),
    (3, 'Nurofen', 1, 100, 'tabl.', '10 mg', '20 szt.', 'Reckitt', '-1|8,00|-1|-1|5|1,00|12|-1', '-1', '', ''),
    (4, 'Ibalgin', 1, 100, 'tabl.', '10 mg', '20 szt.', 'Zentiva', '-1|x|-1|-1', '-1', '', ''),
    (6, 'Apap', 1, 101, 'tabl.', '10 mg', '20 szt.', 'USP', '-1|5,00|-1|-1', '-1', '', '');
INSERT INTO vm VALUES (1, 10), (2, 10), (3, 10), (4, 10), (6, 11);
)sql";

} // namespace

class TestDrugSubstitutes : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        setProgramDir(programFolder.path());

        QVERIFY(TestSupport::buildDatabase(programFolder.filePath(DrugDatabase::drugDatabaseName),
                                           TestSupport::drugSchema() + QString::fromUtf8(fixtureSql)));

        DrugSubstituteViewModel::connectToDrugViewModel();
    }

    void drugOrder_data()
    {
        QTest::addColumn<QStringList>("rowsA");
        QTest::addColumn<QStringList>("rowsB");
        QTest::addColumn<bool>("aFirst");
        QTest::addColumn<bool>("bFirst");

        // The first row is the one of the smallest level id, compared as text; the
        // cheaper leads among rows of one level.
        QTest::newRow("cheaper first, comma or point")
            << QStringList{"-1:3,50"} << QStringList{"-1:12.00"} << true << false;
        QTest::newRow("zero counts as no price") << QStringList{"-1:0,00"} << QStringList{"-1:7,00"} << false << true;
        QTest::newRow("nan is no number") << QStringList{"-1:nan"} << QStringList{"-1:2,00"} << false << true;
        QTest::newRow("the cheaper of one level's rows counts")
            << QStringList{"-1:30,00", "-1:5,00"} << QStringList{"-1:20,00"} << true << false;
        QTest::newRow("full price decides, not the cheaper refund")
            << QStringList{"5:0,50", "-1:30,00"} << QStringList{"-1:20,00", "5:9,00"} << false << true;
        QTest::newRow("smallest level id decides, as text")
            << QStringList{"9:1,00", "10:8,00"} << QStringList{"10:5,00"} << false << true;
        QTest::newRow("unreadable first row goes last")
            << QStringList{"-1:x", "5:1,00"} << QStringList{"-1:40,00"} << false << true;
        QTest::newRow("no rows at all goes last") << QStringList{} << QStringList{"-1:40,00"} << false << true;
        QTest::newRow("two unpriced drugs tie") << QStringList{"-1:-"} << QStringList{} << false << false;
    }

    void drugOrder()
    {
        QFETCH(QStringList, rowsA);
        QFETCH(QStringList, rowsB);

        const Drug a = drugWithRows(QStringLiteral("a"), rowsA);
        const Drug b = drugWithRows(QStringLiteral("b"), rowsB);
        QTEST(DrugSubstituteViewModel::drugLessThan(a, b), "aFirst");
        QTEST(DrugSubstituteViewModel::drugLessThan(b, a), "bFirst");
    }

    void sortPutsUnpricedDrugsLast()
    {
        // Enough drugs for std::sort to partition, with many ties among the
        // unpriced ones; an inconsistent order would let it run past the list.
        QList<Drug> drugs;
        const QStringList unpriced = {"x", "X", "-", "", " ", "nan", "bez", "0"};
        for (int i = 0; i < 40; ++i) {
            const QString payment = i % 2 ? QString::number(40 - i) + QStringLiteral(",25") : unpriced.at(i / 2 % unpriced.size());
            drugs.append(drugWithRows(QString::number(i), {QStringLiteral("-1:") + payment}));
        }
        drugs.append(drugWithRows(QStringLiteral("nan"), {QStringLiteral("-1:nan")}));
        std::sort(drugs.begin(), drugs.end(), DrugSubstituteViewModel::drugLessThan);

        double last = 0;
        for (int i = 0; i < 20; ++i) {
            QString payment = drugs.at(i).priceList.first().payment;
            const double value = payment.replace(QLatin1Char(','), QLatin1Char('.')).toDouble();
            QVERIFY2(value > last, qPrintable(drugs.at(i).vid));
            last = value;
        }
        for (int i = 20; i < drugs.size(); ++i)
            QVERIFY2(!drugs.at(i).priceList.first().payment.endsWith(QLatin1String(",25")), qPrintable(drugs.at(i).vid));
    }

    void priceText_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("expected");

        QTest::newRow("first row after the order") << QStringList{"5:3,20", "-1:25,00"} << "-1 25,00 zł";
        QTest::newRow("capital X") << QStringList{"-1:X"} << "bd.";
        QTest::newRow("dash") << QStringList{"-1:-"} << "bd.";
        QTest::newRow("no rows") << QStringList{} << "";
    }

    void priceText()
    {
        QFETCH(QStringList, rows);
        QTEST(DrugSubstituteItem::priceText(drugWithRows(QStringLiteral("1"), rows).priceList), "expected");
    }

    void listIsReadyWhenSelectionIsAnnounced()
    {
        DrugViewModel* selection = DrugViewModel::instance();
        QSignalSpy announced(DrugSubstituteViewModel::instance(), &DrugSubstituteViewModel::selectedDrugHasSubstitutes);

        // Connected after the model: runs inside the same emission, as the page's
        // readers rely on.
        QStringList seenDirectly;
        QStringList seenQueued;
        QObject context;
        connect(selection, &DrugViewModel::selectedDrugChanged, &context,
                [&] { seenDirectly = vids(DrugSubstituteViewModel::instance()->substitutes()); });
        connect(
            selection, &DrugViewModel::selectedDrugChanged, &context,
            [&] { seenQueued = vids(DrugSubstituteViewModel::instance()->substitutes()); }, Qt::QueuedConnection);

        selection->addDrug(DrugDatabase::drugByVid(QStringLiteral("1")));
        const QStringList cheapestFirst = {"3", "2", "4"};
        QCOMPARE(seenDirectly, cheapestFirst);
        QCOMPARE(announced.count(), 1);
        QTRY_COMPARE(seenQueued, cheapestFirst);

        // A drug without substitutes still announces, with an empty list.
        selection->addDrug(DrugDatabase::drugByVid(QStringLiteral("6")));
        QCOMPARE(seenDirectly, QStringList());
        QCOMPARE(announced.count(), 2);
    }

    void noSelectionEmptiesTheListSilently()
    {
        DrugViewModel* selection = DrugViewModel::instance();
        selection->addDrug(DrugDatabase::drugByVid(QStringLiteral("1")));
        QCOMPARE(DrugSubstituteViewModel::instance()->substitutes().size(), 3);

        QSignalSpy announced(DrugSubstituteViewModel::instance(), &DrugSubstituteViewModel::selectedDrugHasSubstitutes);
        selection->clearDrugs();
        QVERIFY(DrugSubstituteViewModel::instance()->substitutes().isEmpty());
        QCOMPARE(announced.count(), 0);
    }

private:
    QTemporaryDir programFolder;
};

QTEST_MAIN(TestDrugSubstitutes)
#include "tst_drugsubstitutes.moc"
