#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "recipes/recipewidget.h"
#include "simulator.h"
#include "testsupport.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
const QString groupRecords = QStringLiteral("/desktop/usage/recipe_group.php");
const QString drugRecords = QStringLiteral("/desktop/usage/recipe_drug.php");

// Group 1: "Maść borna" with three recipes (one unnamed, two with empty
// blocks) and a synonym; "Maść cynkowa" without one; a name with an
// apostrophe. Group 2 holds a name with a capital Ż. Drug group 700 is a banner's target.
const char* const fixtureSql = R"sql(
INSERT INTO cfg VALUES ('data_version', '1700000000');
INSERT INTO rec_group VALUES (1, 'Maści'), (2, 'Syropy');
INSERT INTO rec_drug VALUES (10, 'Maść borna', 1, 'Unguentum Acidi borici'), (11, 'Maść cynkowa', 1, ''),
    (12, 'Pasta ''Lassara''', 1, ''), (20, 'Żurawina w syropie', 2, ''), (21, 'Syrop prawoślazowy', 2, 'Sirupus Althaeae');
INSERT INTO rec_substance VALUES (1, 'Acidum boricum', ''), (2, 'Vaselinum album', ''), (3, 'Zinci oxidum', ''),
    (4, 'Oxycocci succus', ''), (5, 'Althaeae radix', '');
INSERT INTO rec_recipe VALUES (100, 10, 'Maść borna 3%', 'Utrzeć', 'Na skórę', 'Nie u dzieci'), (101, 10, '', 'Utrzeć', '', ''),
    (102, 10, 'Maść borna 5%', '', 'Na skórę', ''), (110, 11, 'Maść cynkowa', 'Utrzeć', '', ''),
    (120, 12, 'Pasta', 'Utrzeć', '', ''), (200, 20, 'Syrop', 'Wymieszać', '', ''), (210, 21, 'Syrop', 'Macerować', '', '');
INSERT INTO rec_connection VALUES (1, 100, 1, '3,0', '', 'subtilissime'), (2, 100, 2, 'ad 100,0', '', ''),
    (3, 101, 1, '5,0', '', ''), (4, 102, 1, '5,0', '', ''), (5, 110, 3, '10,0', '', ''), (6, 110, 2, 'ad 100,0', '', ''),
    (7, 120, 3, '25,0', '', ''), (8, 200, 4, '30,0', '', ''), (9, 210, 5, '5,0', '', '');
INSERT INTO g VALUES (700, 'Acidum boricum');
INSERT INTO v VALUES (7001, 'Borasol', 1, 700, 'płyn', '3%', '100 g', 'Corvane Pharma', '', '-1', '', '');
)sql";

QString labelText(QWidget* row, const char* name)
{
    auto* label = row->findChild<QLabel*>(QLatin1String(name));
    return label && label->isVisibleTo(row) ? label->text() : QStringLiteral("-");
}
} // namespace

class tst_RecipeWidget : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startSelectsFirstGroupWithOneRecord();
    void filter_data();
    void filter();
    void recipesNumberedWithEmptyBlocksLeftOut();
    void banner_data();
    void banner();
    void startUpReloadsAndButtonsSwitchPages();

    void cleanupTestCase();

public slots:
    void openUrl(const QUrl& url) { openedUrls.append(url.toString()); }

private:
    QListWidget* list(const char* name) const { return page->findChild<QListWidget*>(QLatin1String(name)); }
    QStringList names(const char* listName) const;
    QList<QJsonObject> bodies(const QString& path);

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<RecipeWidget> page;
    QStringList openedUrls;
};

void tst_RecipeWidget::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(dir.isValid());
    setProgramDir(dir.path());
    QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                       TestSupport::drugSchema() + QString::fromUtf8(fixtureSql)));
    QVERIFY(simulator.startOfferingCurrent(QStringLiteral("1700000000")));
    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "openUrl");
}

void tst_RecipeWidget::init()
{
    QVERIFY(simulator.reset());
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), QStringLiteral("1700000000")));
    page = std::make_unique<RecipeWidget>();
    page->resize(1100, 700);
    page->show();
    QVERIFY(QTest::qWaitForWindowExposed(page.get()));
}

void tst_RecipeWidget::cleanup()
{
    page.reset();
    DrugViewModel::instance()->clearDrugs();
    openedUrls.clear();
}

QStringList tst_RecipeWidget::names(const char* listName) const
{
    QStringList result;
    QListWidget* rows = list(listName);
    for (int i = 0; i < rows->count(); ++i)
        result << labelText(rows->itemWidget(rows->item(i)), "name");
    return result;
}

QList<QJsonObject> tst_RecipeWidget::bodies(const QString& path)
{
    QList<QJsonObject> result;
    for (const QJsonValue& record : simulator.records(path))
        result << QJsonDocument::fromJson(record.toObject().value(QStringLiteral("body")).toString().toUtf8()).object();
    return result;
}

void tst_RecipeWidget::startSelectsFirstGroupWithOneRecord()
{
    QCOMPARE(list("recipeGroups")->selectedItems(), QList<QListWidgetItem*>{list("recipeGroups")->item(0)});
    QCOMPARE(names("recipeDrugs"), (QStringList{"Maść borna", "Maść cynkowa", "Pasta 'Lassara'"}));
    QVERIFY(page->findChild<QLabel*>(QStringLiteral("noRecipesImage"))->isVisible());

    // A row without a synonym must not keep the hidden line's height.
    QListWidget* drugs = list("recipeDrugs");
    QVERIFY(drugs->item(1)->sizeHint().height() < drugs->item(0)->sizeHint().height());

    // One record for the selection of the first group, its id a JSON number.
    QTRY_COMPARE(bodies(groupRecords).size(), 1);
    QTest::qWait(500);
    const QList<QJsonObject> records = bodies(groupRecords);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().value(QStringLiteral("group_id")), QJsonValue(1));
}

void tst_RecipeWidget::filter_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<int>("thenGroupRow");
    QTest::addColumn<QStringList>("expected");

    const QStringList wholeGroup{"Maść borna", "Maść cynkowa", "Pasta 'Lassara'"};
    QTest::newRow("name prefix") << QStringList{"maść b"} << -1 << QStringList{"Maść borna"};
    QTest::newRow("capitals typed") << QStringList{"MAŚĆ"} << -1 << QStringList{"Maść borna", "Maść cynkowa"};
    QTest::newRow("synonym") << QStringList{"unguentum"} << -1 << QStringList{"Maść borna"};
    QTest::newRow("first substance") << QStringList{"zinci"} << -1 << QStringList{"Maść cynkowa", "Pasta 'Lassara'"};
    QTest::newRow("apostrophe searched for") << QStringList{"pasta 'l"} << -1 << QStringList{"Pasta 'Lassara'"};
    QTest::newRow("only the selected group") << QStringList{"żur"} << -1 << QStringList{};
    QTest::newRow("blanks leave the list") << QStringList{"maść c", "   "} << -1 << QStringList{"Maść cynkowa"};
    QTest::newRow("cleared line shows the group") << QStringList{"maść c", ""} << -1 << wholeGroup;
    QTest::newRow("text carried to another group") << QStringList{"żurawina"} << 1 << QStringList{"Żurawina w syropie"};
    QTest::newRow("another group unfiltered") << QStringList{""} << 1
                                              << QStringList{"Syrop prawoślazowy", "Żurawina w syropie"};
}

void tst_RecipeWidget::filter()
{
    QFETCH(QStringList, typed);
    QFETCH(int, thenGroupRow);
    QFETCH(QStringList, expected);

    auto* line = page->findChild<QLineEdit*>(QStringLiteral("searchLineEdit"));
    for (const QString& text : typed)
        line->setText(text);
    if (thenGroupRow >= 0)
        list("recipeGroups")->setCurrentRow(thenGroupRow);
    QCOMPARE(names("recipeDrugs"), expected);
}

void tst_RecipeWidget::recipesNumberedWithEmptyBlocksLeftOut()
{
    list("recipeDrugs")->setCurrentRow(0);
    QCOMPARE(page->findChild<QLabel*>(QStringLiteral("drugName"))->text(), QStringLiteral("Maść borna"));
    QVERIFY(!page->findChild<QLabel*>(QStringLiteral("noRecipesImage"))->isVisible());

    // Number, name, the blocks shown, and each ingredient as name/note/amount.
    QStringList shown;
    QLayout* layout = page->findChild<QWidget*>(QStringLiteral("scrollAreaWidgetContents"))->layout();
    for (int i = 0; i < layout->count(); ++i) {
        QWidget* recipe = layout->itemAt(i)->widget();
        if (!recipe)
            continue;
        QStringList parts{labelText(recipe, "recipeNum"), labelText(recipe, "recipeName")};
        for (const char* block : {"frame_2", "realization", "useFrame", "commentsFrame"})
            if (recipe->findChild<QWidget*>(QLatin1String(block))->isVisibleTo(recipe))
                parts << QLatin1String(block);
        auto* substances = recipe->findChild<QListWidget*>(QStringLiteral("substances"));
        for (int row = 0; row < substances->count(); ++row) {
            QWidget* item = substances->itemWidget(substances->item(row));
            parts << labelText(item, "name") + "/" + labelText(item, "note") + "/" + labelText(item, "amount");
        }
        shown << parts.join(QLatin1Char(' '));
    }
    QCOMPARE(shown, (QStringList{
                        "1 Maść borna 3% frame_2 realization useFrame commentsFrame Acidum boricum/subtilissime/3,0 "
                        "Vaselinum album/-/ad 100,0",
                        "2 - frame_2 realization Acidum boricum/-/5,0",
                        "3 Maść borna 5% frame_2 useFrame Acidum boricum/-/5,0",
                    }));

    QTRY_COMPARE(bodies(drugRecords).size(), 1);
    QCOMPARE(bodies(drugRecords).first().value(QStringLiteral("drug_id")), QJsonValue(10));
}

void tst_RecipeWidget::banner_data()
{
    QTest::addColumn<QString>("bannerSql");
    QTest::addColumn<int>("button");
    QTest::addColumn<Qt::CursorShape>("cursor");
    QTest::addColumn<int>("drugsAdded");
    QTest::addColumn<QStringList>("urlsOpened");

    const QString drug = QStringLiteral("INSERT INTO gb VALUES (1, 700);\n");
    const QString address = QStringLiteral("INSERT INTO o_url VALUES (1, 'https://example.com/borasol');\n");
    const QStringList none;
    QTest::newRow("drug, left click") << drug << int(Qt::LeftButton) << Qt::PointingHandCursor << 1 << none;
    QTest::newRow("drug and address: the drug wins")
        << drug + address << int(Qt::LeftButton) << Qt::PointingHandCursor << 1 << none;
    QTest::newRow("address") << address << int(Qt::LeftButton) << Qt::PointingHandCursor << 0
                             << QStringList{"https://example.com/borasol"};
    QTest::newRow("right click does nothing") << drug << int(Qt::RightButton) << Qt::PointingHandCursor << 0 << none;
    QTest::newRow("without a link") << QString() << int(Qt::LeftButton) << Qt::ArrowCursor << 0 << none;
    QTest::newRow("no banner") << QStringLiteral("DELETE FROM o;\n") << int(Qt::LeftButton) << Qt::ArrowCursor << 0
                               << none;
}

void tst_RecipeWidget::banner()
{
    QFETCH(QString, bannerSql);
    QFETCH(int, button);
    QFETCH(Qt::CursorShape, cursor);
    QFETCH(int, drugsAdded);
    QFETCH(QStringList, urlsOpened);

    QImage picture(300, 80, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "PNG");
    QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                       QStringLiteral("DELETE FROM o;\nDELETE FROM o_url;\nDELETE FROM gb;\n"
                                                      "INSERT INTO o VALUES (1, 'banner', '%1');\n")
                                               .arg(QString::fromLatin1(png.toBase64()))
                                           + bannerSql));
    AdvertProvider::instance()->changeAd();

    auto* advert = page->findChild<QLabel*>(QStringLiteral("advert"));
    QCOMPARE(advert->cursor().shape(), cursor);
    const bool fixedBanner = bannerSql.startsWith(QLatin1String("DELETE"));
    const QImage shown = advert->pixmap(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(shown == QImage(QStringLiteral(":/icons/banner_corvane")).convertToFormat(QImage::Format_ARGB32),
             fixedBanner);

    QTest::mouseClick(advert, Qt::MouseButton(button));
    QCOMPARE(DrugViewModel::instance()->drugCount(), drugsAdded);
    if (drugsAdded)
        QCOMPARE(DrugViewModel::instance()->firstDrug()->vid, QStringLiteral("7001"));
    QCOMPARE(openedUrls, urlsOpened);
}

void tst_RecipeWidget::startUpReloadsAndButtonsSwitchPages()
{
    page.reset();
    MainWindow window;
    window.show();
    // The page loads its groups when built and again at the end of the start-up checks.
    QTRY_COMPARE_WITH_TIMEOUT(bodies(groupRecords).size(), 2, 20000);

    auto* drugPage = window.findChild<QWidget*>(QStringLiteral("drugBase"));
    auto* recipesPage = window.findChild<QWidget*>(QStringLiteral("recipes"));
    window.findChild<QPushButton*>(QStringLiteral("recipesButton"))->click();
    QVERIFY(recipesPage->isVisible() && !drugPage->isVisible());
    recipesPage->findChild<QPushButton*>(QStringLiteral("drugBaseButton"))->click();
    QVERIFY(drugPage->isVisible() && !recipesPage->isVisible());
}

void tst_RecipeWidget::cleanupTestCase()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    DrugDatabase::closeDatabase();
}

QTEST_MAIN(tst_RecipeWidget)
#include "tst_recipewidget.moc"
