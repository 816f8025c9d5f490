#include "appdir.h"
#include "db/drugdatabase.h"
#include "testsupport.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <algorithm>
#include <ctime>
#include <memory>

using namespace DrugDatabase;
using TestSupport::buildDatabase;

namespace {

const char drugsSql[] = R"sql(
INSERT INTO xp VALUES (1, 'Dopuszczony'), (2, 'Wycofany');
INSERT INTO g VALUES (100, 'Paracetamolum'), (200, 'Ibuprofenum'), (300, 'Praeparatum compositum'), (400, 'Nystatinum');
INSERT INTO m VALUES (1, 'Paracetamolum'), (2, 'Coffeinum'), (3, 'Prep. złoż.'), (4, 'Ibuprofenum'), (5, 'Hydrocortisonum');
INSERT INTO postac_match VALUES ('tabletki', 1), ('tabletki powlekane', 1), ('kapsułki', 2), ('zawiesina doustna', 3);
INSERT INTO xs VALUES (7, '50%', 'Odpłatność 50%'), (9, '30%', 'Odpłatność 30%'), (5, 'ryczałt', 'Opłata ryczałtowa');
INSERT INTO d VALUES (12, 'Ból przewlekły', 'Ból w chorobie nowotworowej'), (7, 'chemioterapia', 'Leczenie w ramach chemioterapii');
INSERT INTO i VALUES (5, 'Bóle różnego pochodzenia.');

INSERT INTO v VALUES (1, 'Apap', 1, 100, 'tabletki', '500 mg', '50 szt.', 'US Pharmacia', '7|3,20|12|-1|-1|12,80|-1|-1', 5, '000123\ulotka.pdf', '14478650, 14478651');
INSERT INTO v VALUES (2, 'Paracetamol Biofarm', 1, 100, 'tabletki powlekane', '500 mg', '20 szt.', 'Biofarm', '9|5,00|12|-1', 5, '', '');
INSERT INTO v VALUES (3, 'Panadol Extra', 2, 100, 'tabletki', '500 mg', '24 szt.', 'GSK', '9|9,99|12|-1', 5, '', '');
INSERT INTO v VALUES (4, 'Apap Junior', 1, 100, 'tabletki', '250 mg', '10 szt.', 'US Pharmacia', '7|2,00|12|-1', 5, '', '14478651,');
INSERT INTO v VALUES (5, 'Apap zawiesina', 1, 100, 'zawiesina doustna', '500 mg', '100 ml', 'US Pharmacia', '7|2,00|12|-1', 5, '', '1); DROP TABLE v; --');
INSERT INTO v VALUES (6, 'Paracetamol Dose', 1, 100, 'tabletki', '500mg', '10 szt.', 'Polfa', '7|2,00|12|-1', 5, '', ' 14478651 ');
INSERT INTO v VALUES (7, 'Gripex', 1, 300, 'tabletki', '500 mg', '12 szt.', 'USP', '7|4,00|12|-1', 5, '', '');
INSERT INTO v VALUES (8, 'Gripex Bis', 1, 300, 'tabletki', '500 mg', '24 szt.', 'USP', '7|4,00|12|-1', 5, '', '');
INSERT INTO v VALUES (9, 'Codipar', 1, 100, 'kapsułki', '500 mg', '10 szt.', 'Polfa', '3|1,00|8|12|4|2,00|9|-1', 5, '', '');
INSERT INTO v VALUES (10, 'Efferalgan', 1, 100, 'tabletki', '500 mg', '16 szt.', 'UPSA', '4|2,00|99|-1', 5, '', '');
INSERT INTO v VALUES (11, 'Apap Bez Refundacji', 1, 100, 'tabletki', '500 mg', '6 szt.', 'US Pharmacia', '', 5, '', '');
INSERT INTO v VALUES (12, 'D''Arcy krem', 1, 200, 'krem', '5%', '30 g', 'D''Arcy', '-1|12,50|-1|-1', -1, '', '');
INSERT INTO v VALUES (13, 'Nystatyna', 1, 400, 'tabletki', '500 000 j.m.', '16 szt.', 'Polfa', '5||7|-1', 5, '', '99000001');
INSERT INTO v VALUES (14, 'Paracetamol Kaps', 1, 100, 'kapsułki', '500 mg', '10 szt.', 'Polfa', '9|5,00|12|-1', 5, '', '');
INSERT INTO v VALUES (15, 'Sierota', 1, 999, 'tabletki', '1 mg', '1 szt.', 'Nikt', '7|3,20', 5, '', '');
INSERT INTO v VALUES (17, 'Hydrokortyzon krem', 1, 200, 'krem', '5%', '15 g', 'Jelfa', '-1|10,00|-1|-1', -1, '', '');
INSERT INTO v VALUES (16, 'Nieznane odnośniki', 1, 200, 'tabletki', '1 mg', '1 szt.', 'Nikt', '8|1,00|13|4', 5, '', '');
INSERT INTO v VALUES (18, 'Żelaza siarczan', 1, 400, 'tabletki', '100 mg', '50 szt.', 'Polfa', '', 5, '', '');
INSERT INTO v VALUES (19, 'Miętówka', 1, 400, 'tabletki', '1 g', '20 szt.', 'Polfa', '', 5, '', '');

INSERT INTO ve VALUES (1, '5909990733828'), (1, '5909990733835'), (2, '5909990000011'), (4, '5909990733842'),
                      (12, '590''123');

INSERT INTO vm VALUES (1, 1), (2, 1), (3, 1), (3, 2), (4, 1), (5, 1), (6, 1), (7, 1), (7, 3), (8, 1), (8, 3),
                      (9, 1), (10, 1), (11, 1), (14, 1), (12, 5), (17, 5);

INSERT INTO z VALUES (100, 'Wskazania', 'Ból o małym nasileniu.'), (100, 'Dawkowanie', '1 tabletka co 6 godzin.'),
                     (100, '', 'Tekst bez tytułu.'), (200, 'Wskazania', 'Zmiany skórne.');

INSERT INTO w VALUES (14478650, 0, 'Alkohol', 'Nie pić alkoholu.'), (14478651, 0, 'Pojazdy', 'Nie prowadzić.'),
                     (99000001, 14478651, 'Bez piktogramu', 'Ostrzeżenie spoza zestawu.');
INSERT INTO food VALUES (14478650), (14478650);

INSERT INTO gk VALUES (1, 'Wstrzymanie', 'Decyzja o wstrzymaniu obrotu'), (2, 'Wycofanie', 'Decyzja o wycofaniu z obrotu');
INSERT INTO vg VALUES (1, 1, 1, '2023-01-10', 'gif/1.pdf'), (2, 1, 2, '2024-05-02', 'gif/2.pdf'), (3, 2, 1, '2022-01-01', 'gif/3.pdf');

INSERT INTO pharmacy VALUES (1, 'Apteka Pod Orłem', 'Długa 5', '00-001', 'Warszawa', '22 111', 'a@a.pl', 'a.pl'),
                            (2, 'Apteka Centralna', 'Rynek 1', '30-001', 'Kraków', '12 222', 'b@b.pl', 'b.pl'),
                            (3, 'Apteka Miejska', 'Krakowska 3', '50-001', 'Wrocław', '71 333', 'c@c.pl', 'c.pl');

INSERT INTO rec_group VALUES (1, 'Maści'), (2, 'Krople');
INSERT INTO rec_drug VALUES (10, 'Maść borna', 1, 'Unguentum boricum'), (11, 'Maść cynkowa', 1, 'Unguentum zinci'), (12, 'Krople żołądkowe', 2, ''), (13, 'Żywokost maść', 1, '');
INSERT INTO rec_recipe VALUES (102, 13, 'Maść żywokostowa', '', '', '');
INSERT INTO rec_connection VALUES (1003, 102, 2, '', '', '');
INSERT INTO rec_substance VALUES (2, 'Vaselinum album', '');

INSERT INTO cfg VALUES ('data_version', '1700000000'), ('list_date', '2024-01-01');
)sql";

QStringList vidsOf(const QList<Drug>& drugs)
{
    QStringList vids;
    for (const Drug& drug : drugs)
        vids.append(drug.vid);
    std::sort(vids.begin(), vids.end(),
              [](const QString& a, const QString& b) { return a.toInt() < b.toInt(); });
    return vids;
}

} // namespace

class TestDrugDatabase : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        // Dates are checked as texts of local time.
        qputenv("TZ", "UTC");
        tzset();
        QVERIFY(buildDatabase(fixtureDir.filePath(drugDatabaseName),
                              TestSupport::drugSchema() + QString::fromUtf8(drugsSql)));
    }

    void init()
    {
        setProgramDir(fixtureDir.path());
        closeDatabase();
    }

    void drugsByIdAndGroup()
    {
        const Drug drug = drugByVid(QStringLiteral("1"));
        QCOMPARE(QStringList({drug.vid, drug.name, drug.status, drug.inn, drug.kind, drug.dose, drug.box,
                              drug.company, drug.prices, drug.iid, drug.gid})
                     .join('/'),
                 QStringLiteral("1/Apap/Dopuszczony/Paracetamolum/tabletki/500 mg/50 szt./US Pharmacia/"
                                "7|3,20|12|-1|-1|12,80|-1|-1/5/100"));

        QCOMPARE(firstDrugOfGroup(QStringLiteral("300")).vid, QStringLiteral("7"));
        QCOMPARE(vidsOf(drugsOfGroup(QStringLiteral("300"))), (QStringList{"7", "8"}));

        // A package whose group isn't in g is "not found" for the scan road.
        const Drug orphan = drugByVid(QStringLiteral("15"));
        QCOMPARE(orphan.name, QStringLiteral("Sierota"));
        QVERIFY(orphan.gid.isEmpty());
        // Ids that aren't numbers are values, not SQL.
        QVERIFY(drugByVid(QStringLiteral("1 OR 1=1")).vid.isEmpty());
        QVERIFY(drugsOfGroup(QStringLiteral("100 OR 1=1")).isEmpty());
    }

    void drugByEan_data()
    {
        QTest::addColumn<QString>("ean");
        QTest::addColumn<QString>("vid");

        QTest::newRow("first of two codes") << "5909990733828" << "1";
        QTest::newRow("unknown code") << "5909990999999" << "";
        QTest::newRow("underscore is any one character") << "590999073382_" << "1";
        QTest::newRow("quote is searched for") << "590'123" << "12";
    }

    void drugByEan()
    {
        QFETCH(QString, ean);
        QFETCH(QString, vid);
        if (vid.isEmpty())
            QTest::ignoreMessage(QtDebugMsg, "0 rows");
        QCOMPARE(DrugDatabase::drugByEan(ean).vid, vid);
    }

    void searchDrugs_data()
    {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("limit");
        QTest::addColumn<QStringList>("vids");

        const QStringList apaps{"1", "1", "4", "5", "11"};
        QTest::newRow("start of the name, each EAN a row") << QStringList{"apap"} << 20 << apaps;
        QTest::newRow("inside a word is no match") << QStringList{"pap"} << 20 << QStringList{};
        QTest::newRow("start of a later word") << QStringList{"jun"} << 20 << QStringList{"4"};
        QTest::newRow("every word must match") << QStringList{"para", "bio"} << 20 << QStringList{"2"};
        QTest::newRow("substring of an EAN") << QStringList{"0733842"} << 20 << QStringList{"4"};
        QTest::newRow("trailing blank's empty word matches all") << QStringList{"apap", ""} << 20 << apaps;
        // Pins a null QString bound as SQL NULL, which made the pattern match nothing.
        QTest::newRow("null word like an empty one") << QStringList{"apap", QString()} << 20 << apaps;
        QTest::newRow("quote in a name") << QStringList{"d'arcy"} << 20 << QStringList{"12"};
        QTest::newRow("quote and parenthesis") << QStringList{"') OR 1=1 --"} << 20 << QStringList{};
        QTest::newRow("no words, limit") << QStringList{} << 3 << QStringList{"1", "1", "2"};
    }

    void searchDrugs()
    {
        QFETCH(QStringList, words);
        QFETCH(int, limit);
        QTEST(vidsOf(DrugDatabase::searchDrugs(words, limit)), "vids");
    }

    void polishLettersFold_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("phrase");
        QTest::addColumn<QStringList>("ids");

        // Regression: SQLite folded only ASCII letters, so lower-case Polish letters found nothing.
        QTest::newRow("drug in lower case") << "drugs" << "żelaza" << QStringList{"18"};
        QTest::newRow("drug in upper case") << "drugs" << "MIĘTÓWKA" << QStringList{"19"};
        QTest::newRow("recipe drug in lower case") << "recipes" << "żywokost" << QStringList{"13"};
        QTest::newRow("pharmacy's city in upper case") << "pharmacies" << "KRAKÓW" << QStringList{"2"};
        QTest::newRow("other letters stay apart") << "drugs" << "zelaza" << QStringList{};
    }

    void polishLettersFold()
    {
        QFETCH(QString, search);
        QFETCH(QString, phrase);

        QStringList found;
        if (search == QLatin1String("drugs"))
            found = vidsOf(DrugDatabase::searchDrugs({phrase}, 20));
        else if (search == QLatin1String("recipes"))
            for (const RecipeDrug& drug : searchRecipeDrugs(1, phrase))
                found << QString::number(drug.id);
        else
            for (const Pharmacy& pharmacy : searchPharmacies(phrase, 20))
                found << QString::number(pharmacy.id);
        QTEST(found, "ids");
    }

    void substitutes_data()
    {
        QTest::addColumn<QString>("vid");
        QTest::addColumn<QStringList>("vids");

        // Apap (1): 2 is of the same form class; 3 has one more substance; 4 and 6
        // differ in the dose text; 5, 9 and 14 are of other form classes; 10 shares
        // no scope; 11 has no refund groups; 7 and 8 add a compound preparation.
        // Capsules (14): 9 shares scope 12 only through its off-label field.
        QTest::newRow("superset of substances, form class, loose scope")
            << "1" << QStringList{"2", "3", "7", "8"};
        QTest::newRow("more substances than the candidates") << "3" << QStringList{};
        QTest::newRow("compound preparations aren't matched") << "7" << QStringList{};
        QTest::newRow("form class of capsules, loose scope pattern") << "14" << QStringList{"9"};
        QTest::newRow("no refund groups") << "11" << QStringList{};
        QTest::newRow("form outside every class matches itself") << "12" << QStringList{"17"};
    }

    void substitutes()
    {
        QFETCH(QString, vid);
        QTEST(vidsOf(substitutesOf(drugByVid(vid))), "vids");
    }

    void refundRows_data()
    {
        QTest::addColumn<QString>("vid");
        // One text per row: level name, payment, scope name, off-label text.
        QTest::addColumn<QStringList>("rows");

        const QString allIndications =
            QStringLiteral("Refundacja we wszystkich zarejestrowanych wskazaniach (patrz wskazania wg ChPL).");
        QTest::newRow("two groups in order")
            << "1" << QStringList{"50%/3,20/Ból przewlekły/Brak wskazań", "100%/12,80/" + allIndications + "/Brak wskazań"};
        QTest::newRow("empty payment keeps positions") << "13" << QStringList{"ryczałt//chemioterapia/Brak wskazań"};
        QTest::newRow("empty prices") << "11" << QStringList{"///"};
        QTest::newRow("incomplete group") << "15" << QStringList{"50%/3,20//"};
        QTest::newRow("ids without rows") << "16" << QStringList{"/1,00//"};
    }

    void refundRows()
    {
        QFETCH(QString, vid);
        QStringList actual;
        for (const DrugPrice& price : drugByVid(vid).priceList)
            actual << price.level.name + "/" + price.payment + "/" + price.scope.name + "/" + price.offLabel.descr;
        QTEST(actual, "rows");
    }

    void warnings_data()
    {
        QTest::addColumn<QString>("vid");
        // "id food" per warning, sorted.
        QTest::addColumn<QStringList>("warnings");
        // The list in v.warns is refused as a whole, with a log line.
        QTest::addColumn<bool>("rejected");

        QTest::newRow("food warning listed twice in food comes twice")
            << "1" << QStringList{"14478650 food", "14478650 food", "14478651"} << false;
        QTest::newRow("blanks around an id") << "6" << QStringList{"14478651"} << false;
        QTest::newRow("id outside the pictograms") << "13" << QStringList{"99000001"} << false;
        QTest::newRow("empty list") << "2" << QStringList{} << false;
        QTest::newRow("trailing comma") << "4" << QStringList{} << true;
        QTest::newRow("SQL in the column") << "5" << QStringList{} << true;
    }

    void warnings()
    {
        QFETCH(QString, vid);
        QFETCH(bool, rejected);
        if (rejected)
            QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral("^Database error.*numbers")));
        QStringList actual;
        for (const DrugWarning& warning : warningsOf(vid))
            actual << warning.id + (warning.isFood ? " food" : "");
        actual.sort();
        QTEST(actual, "warnings");
        // The table is still there.
        QCOMPARE(drugByVid(QStringLiteral("1")).name, QStringLiteral("Apap"));
    }

    void smallReads()
    {
        QCOMPARE(indicationsById(QStringLiteral("5")), QStringLiteral("Bóle różnego pochodzenia."));
        QCOMPARE(listDate(), QStringLiteral("2024-01-01"));
        QCOMPARE(leafletPath(QStringLiteral("1")), QStringLiteral("000123/ulotka.pdf"));
        QCOMPARE(leafletPath(QStringLiteral("2")), QString());

        // Description sections come in the join's order; only the set is checked.
        QStringList captions;
        for (const DescriptionSection& section : descriptionsOf(QStringLiteral("1"))) {
            QVERIFY(!section.value.isEmpty());
            captions << section.caption;
        }
        captions.sort();
        QCOMPARE(captions, (QStringList{"", "Dawkowanie", "Wskazania"}));
        // A group without descriptions still gives one row of the left join.
        QVERIFY(descriptionsOf(QStringLiteral("13")).isEmpty());

        // GIF decisions, newest first.
        QStringList decisions;
        for (const GifDecision& decision : gifDecisions(QStringLiteral("1")))
            decisions << QStringList{QString::number(decision.id), QString::number(decision.versionId),
                                     decision.date, decision.path, decision.name, decision.descr}
                             .join('/');
        QCOMPARE(decisions, (QStringList{"2/1/2024-05-02/gif/2.pdf/Wycofanie/Decyzja o wycofaniu z obrotu",
                                         "1/1/2023-01-10/gif/1.pdf/Wstrzymanie/Decyzja o wstrzymaniu obrotu"}));
        QVERIFY(gifDecisions(QStringLiteral("3")).isEmpty());

        QCOMPARE(DrugDatabase::databaseDateText(), QStringLiteral("2023-11-14 22:13:20"));
        // A database without a version reads as time 0.
        useDatabase(QStringLiteral("CREATE TABLE cfg (key TEXT, val TEXT)"));
        QCOMPARE(DrugDatabase::databaseDateText(), QStringLiteral("1970-01-01 00:00:00"));
    }

    void keysOfAnyColumnType()
    {
        // Ids are bound as numbers, as the literals they once were: they meet
        // untyped columns holding numbers as well as text columns holding digits.
        useDatabase(QStringLiteral(
            "CREATE TABLE v (vid, name, pid, gid, kind, dose, box, company, prices, iid, leaflet, warns);\n"
            "CREATE TABLE g (gid, inn);\nCREATE TABLE xp (id, name);\n"
            "CREATE TABLE xs (id TEXT, name TEXT, descr TEXT);\nCREATE TABLE d (id, name, descr);\n"
            "CREATE TABLE x (id TEXT, descr TEXT);\nCREATE TABLE i (id TEXT, descr TEXT);\n"
            "INSERT INTO v VALUES (1, 'Apap', 1, 100, 'tabletki', '500 mg', '', '', '7|3,20|12|3', 5, '', '');\n"
            "INSERT INTO g VALUES (100, 'Paracetamolum');\nINSERT INTO xp VALUES (1, 'Dopuszczony');\n"
            "INSERT INTO xs VALUES ('7', '50%', '');\nINSERT INTO d VALUES (12, 'Ból', '');\n"
            "INSERT INTO x VALUES ('3', 'Gorączka');\nINSERT INTO i VALUES ('5', 'Bóle.');\n"));
        const Drug drug = drugByVid(QStringLiteral("1"));
        QCOMPARE(QString(drug.status + "/" + drug.gid), QStringLiteral("Dopuszczony/100"));
        const DrugPrice price = drug.priceList.value(0);
        QCOMPARE(QString(price.level.name + "/" + price.scope.name + "/" + price.offLabel.descr),
                 QStringLiteral("50%/Ból/Gorączka"));
        QCOMPARE(firstDrugOfGroup(QStringLiteral("100")).vid, QStringLiteral("1"));
        QCOMPARE(indicationsById(drug.iid), QStringLiteral("Bóle."));
    }

    void reopensAfterClose()
    {
        // The updater's case: the file is replaced while closed, and the next
        // statement reads the new one, not what was prepared on the old.
        useDatabase(TestSupport::drugSchema()
                    + QStringLiteral("INSERT INTO v (vid, name, gid, prices) VALUES (1, 'Stary Apap', 100, '');\n"));
        QCOMPARE(drugByVid(QStringLiteral("1")).name, QStringLiteral("Stary Apap"));
        closeDatabase();
        const QString path = programDir() + "/" + drugDatabaseName;
        QVERIFY(QFile::remove(path));
        QVERIFY(buildDatabase(path, TestSupport::drugSchema()
                                        + QStringLiteral("INSERT INTO v (vid, name, gid, prices) VALUES (1, 'Nowy Apap', 100, '');\n")));
        QCOMPARE(drugByVid(QStringLiteral("1")).name, QStringLiteral("Nowy Apap"));
    }

    void workerThreadHasItsOwnConnection()
    {
        QCOMPARE(drugByVid(QStringLiteral("1")).name, QStringLiteral("Apap"));
        QString workerConnection;
        QString workerDrug;
        std::unique_ptr<QThread> worker(QThread::create([&] {
            workerConnection = databaseHandle(drugDatabaseName).connectionName();
            workerDrug = drugByVid(QStringLiteral("2")).name;
        }));
        worker->start();
        QVERIFY(worker->wait(30000));

        QCOMPARE(workerDrug, QStringLiteral("Paracetamol Biofarm"));
        QVERIFY(workerConnection != drugDatabaseName);
        // Gone with its thread, and the main thread's connection untouched.
        QVERIFY(!QSqlDatabase::contains(workerConnection));
        QVERIFY(QSqlDatabase::database(drugDatabaseName, false).isOpen());
        QCOMPARE(drugByVid(QStringLiteral("1")).name, QStringLiteral("Apap"));
    }

    void brokenFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");

        QTest::newRow("not a database") << QByteArray("This is a leaflet, not a database.\n").repeated(200)
                                        << "not a database";
        QTest::newRow("empty file, no tables") << QByteArray() << "no such table";
    }

    void brokenFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, error);
        useDatabase(QString());
        QFile file(programDir() + "/" + drugDatabaseName);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
        file.close();

        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Database error.*" + error));
        QVERIFY(drugByVid(QStringLiteral("1")).vid.isEmpty());
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^Database error.*" + error));
        QTest::ignoreMessage(QtDebugMsg, "0 rows");
        QVERIFY(DrugDatabase::drugByEan(QStringLiteral("5909990733828")).vid.isEmpty());
        QVERIFY(DrugDatabase::searchDrugs({QStringLiteral("apap")}, 20).isEmpty());
        QVERIFY(warningsOf(QStringLiteral("1")).isEmpty());
        // The full-payment records are fixed texts that need no table.
        const RefundLevel full = refundLevelById(QStringLiteral("-1"));
        QCOMPARE(full.name + "/" + full.descr, QStringLiteral("100%/Pełna odpłatność"));
    }

private:
    // Points the program's folder at a new one holding a database built from `sql`.

    void useDatabase(const QString& sql)
    {
        auto dir = std::make_unique<QTemporaryDir>();
        if (!sql.isNull())
            QVERIFY(buildDatabase(dir->filePath(drugDatabaseName), sql));
        setProgramDir(dir->path());
        closeDatabase();
        extraDirs.push_back(std::move(dir));
    }

    QTemporaryDir fixtureDir;
    std::vector<std::unique_ptr<QTemporaryDir>> extraDirs;
};

QTEST_GUILESS_MAIN(TestDrugDatabase)
#include "tst_drugdatabase.moc"
