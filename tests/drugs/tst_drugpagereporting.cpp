#include "db/drugdatabase.h"
#include "drugs/collapsiblesection.h"
#include "drugs/drugviewmodel.h"
#include "drugs/gifbubble.h"
#include "mainwindow.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/advertprovider.h"

#include <QDesktopServices>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMovie>
#include <QPushButton>
#include <QSqlQuery>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

// What the drug page of a main window over the demo database reports and shows:
// the usage record of each use, from its real trigger, as the simulator receives
// it; and the banner, over the demo banners one at a time, its clicks caught here.
class tst_DrugPageReporting : public QObject {
    Q_OBJECT

public slots:
    void openUrl(const QUrl& url) { opened << url.toString(); }

private slots:
    void initTestCase();
    void banner_data();
    void banner();
    void recordOfEachUse();

private:
    template <typename T> T* child(const char* name) { return window->findChild<T*>(QLatin1String(name)); }
    void expectOne(const QString& path, const QString& values, bool more = false);
    void keepBanner(int id) // the demo base with banner `id` alone (none for 0)
    {
        DrugDatabase::closeDatabase();
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        QSqlQuery(DrugDatabase::databaseHandle(DrugDatabase::drugDatabaseName)).exec("DELETE FROM o WHERE id <> " + QString::number(id));
    }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QStringList opened;
};

void tst_DrugPageReporting::initTestCase()
{
    QDesktopServices::setUrlHandler("https", this, "openUrl");
    keepBanner(0);
    AdvertProvider::instance()->changeAd();
    QVERIFY(simulator.startOfferingCurrent(QString::number(DrugDatabase::dataVersion().toLongLong() + 86400)));
    window = std::make_unique<MainWindow>(nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(window->statusBar()->currentMessage(), "Baza danych została zaktualizowana!", 20000);
    // The banner after the update comes from the new base: the old one had none.
    QVERIFY(!AdvertProvider::instance()->currentAdvert().type.isEmpty());
    QVERIFY(simulator.waitForStartupChecks());
    window->show();
}

void tst_DrugPageReporting::banner_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("leadsTo"); // the drug selected or the address opened by a left click

    QTest::newRow("no banner at all") << 0 << "fixed" << "";
    QTest::newRow("unknown type") << 4 << "fixed" << "";
    QTest::newRow("empty picture") << 5 << "empty" << "";
    QTest::newRow("web address") << 1 << "picture" << "https://www.example.com/quillard-demo";
    QTest::newRow("drug and web address") << 7 << "picture" << "100080";
    QTest::newRow("animation") << 2 << "movie" << "100001";
}

void tst_DrugPageReporting::banner()
{
    QFETCH(int, id);
    QFETCH(QString, shown);
    QFETCH(QString, leadsTo);

    keepBanner(id);
    auto* label = child<QLabel>("advert");
    AdvertProvider::instance()->changeAd();
    AdvertProvider::instance()->changeAd(); // a new banner replaces the one shown
    opened.clear();
    DrugViewModel::instance()->clearDrugs();
    QCOMPARE(label->pixmap(Qt::ReturnByValue).isNull(), shown == "empty" || shown == "movie");
    if (shown == "fixed")
        QCOMPARE(label->pixmap(Qt::ReturnByValue).toImage(), QPixmap(":/icons/banner_corvane").toImage());
    QCOMPARE(label->movie() && label->movie() == AdvertProvider::instance()->currentMovie() && label->movie()->state() == QMovie::Running,
             shown == "movie");
    QCOMPARE(label->cursor().shape(), leadsTo.isEmpty() ? Qt::ArrowCursor : Qt::PointingHandCursor);

    QTest::mouseClick(label, Qt::RightButton);
    QTest::mouseClick(label, Qt::LeftButton);
    const Drug* selected = DrugViewModel::instance()->selectedDrug();
    QCOMPARE(selected ? selected->vid : opened.join(' '), leadsTo);
    QCoreApplication::processEvents(); // the page catches up with the selection
}

// Exactly one record holding `values` among others has come to `path` since
// the last check; with `more`, another check of the same use follows. Records
// of earlier uses may still come in late: they are not counted.
void tst_DrugPageReporting::expectOne(const QString& path, const QString& values, bool more)
{
    const QJsonObject expected = QJsonDocument::fromJson(values.toUtf8()).object();
    const auto matching = [&] {
        int count = 0;
        for (const QJsonValue& received : simulator.records("/desktop/usage/" + path)) {
            const QJsonObject record = QJsonDocument::fromJson(received["body"].toString().toUtf8()).object();
            bool holds = true;
            for (const QString& key : expected.keys())
                holds = holds && record[key] == expected[key];
            count += holds ? 1 : 0;
        }
        return count;
    };
    QTRY_VERIFY2_WITH_TIMEOUT(matching() >= 1, qPrintable(values), 30000);
    QTest::qWait(300); // and no second one
    QCOMPARE(matching(), 1);
    QVERIFY(more || simulator.reset());
}

void tst_DrugPageReporting::recordOfEachUse()
{
    QTest::qWait(500); // the records of the banners' clicks come first
    QVERIFY(simulator.reset());
    DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid("100001"));
    expectOne("click.php", R"({"type":"click_big_window","vid":"100001","window":"Wyszukiwarka"})");

    auto* tabs = child<QTabWidget>("tabWidget");
    auto* list = child<QListWidget>("substituteDrugsList");
    // The narrow offscreen screen may scroll the tab out of the bar; the bar's own signal stands for the click.
    emit tabs->tabBarClicked(tabs->indexOf(list->parentWidget()));
    expectOne("substitute_view.php", R"({"source":"tab","vid":"100001"})", true);
    expectOne("click.php", R"({"type":"click_big_window","vid":"100001","window":"Zamienniki : 3"})");

    auto* section = child<QWidget>("descFrame")->findChild<CollapsibleSection*>();
    section->findChild<QToolButton*>()->click();
    section->findChild<QToolButton*>()->click(); // closing sends none
    expectOne("click.php", R"({"type":"click_big_window","vid":"100001","window":")" + section->title() + "\"}");

    auto* bubble = new GifBubble(nullptr); // it deletes itself when its time is up
    bubble->Show("gif/a.pdf", "gif/a.pdf", "2025-03-14", "Wycofanie", 1, "100001");
    bubble->findChild<QPushButton*>("pushButton")->click();
    expectOne("click.php", R"({"type":"gif","vid":"100001","window":"gif/a.pdf"})");

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    expectOne("substitute_click.php", R"({"vid":"100001","vid_to":"100002"})", true);
    expectOne("click.php", R"({"type":"click_big_window","vid":"100002","window":"Wyszukiwarka"})");

    window->onNewReading("5909990001118"); // a code without a drug
    window->onNewReading("5909990000012");
    expectOne("scanned_ean.php", R"({"ean":"5909990000012","vid":"100001"})");

    QTest::keyClicks(child<QLineEdit>("searchLineEdit"), "para");
    expectOne("search.php", R"({"phrase":"para","type":"drug_list","window":" "})");
}

QTEST_MAIN(tst_DrugPageReporting)
#include "tst_drugpagereporting.moc"
