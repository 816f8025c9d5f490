#include "appdir.h"
#include "db/drugdatabase.h"
#include "mainwindow.h"
#include "recipes/drugrecipeitem.h"
#include "recipes/recipewidget.h"
#include "simulator.h"
#include "testsupport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
// "Maść borna" has three recipes, the second unnamed; group 2 holds a capital Ż.
const char* const fixtureSql = R"sql(
INSERT INTO cfg VALUES ('data_version', '1700000000');
INSERT INTO rec_group VALUES (1, 'Maści'), (2, 'Syropy');
INSERT INTO rec_drug VALUES (10, 'Maść borna', 1, 'Unguentum Acidi borici'), (11, 'Maść cynkowa', 1, ''),
    (12, 'Pasta ''Lassara''', 1, ''), (20, 'Żurawina w syropie', 2, '');
INSERT INTO rec_substance VALUES (1, 'Acidum boricum', ''), (2, 'Vaselinum album', ''), (3, 'Zinci oxidum', '');
INSERT INTO rec_recipe VALUES (100, 10, 'Maść borna 3%', 'Utrzeć', 'Na skórę', 'Nie u dzieci'), (101, 10, '', 'Utrzeć', '', ''),
    (102, 10, 'Maść borna 5%', '', 'Na skórę', ''), (110, 11, 'A', '', '', ''), (120, 12, 'A', '', '', ''), (200, 20, 'A', '', '', '');
INSERT INTO rec_connection VALUES (1, 100, 1, '3,0', '', 'subtilissime'), (2, 100, 2, 'ad 100,0', '', ''), (3, 101, 1, '5,0', '', ''),
    (4, 102, 1, '', '', ''), (5, 110, 3, '', '', ''), (6, 110, 2, '', '', ''), (7, 120, 3, '', '', ''), (8, 200, 1, '', '', '');
)sql";

QString shown(QWidget* row, const char* name)
{
    auto* label = row->findChild<QLabel*>(QLatin1String(name));
    return label->isVisibleTo(row) ? label->text() : QStringLiteral("-");
}
} // namespace

class tst_RecipeWidget : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void startSelectsFirstGroupWithOneRecord();
    void filter_data();
    void filter();
    void recipesNumberedWithEmptyBlocksLeftOut();
    void startUpReloadsAndButtonsSwitchPages();

private:
    QListWidget* list(const char* name) const { return page->findChild<QListWidget*>(QLatin1String(name)); }
    QList<QJsonObject> records(const char* kind);

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<RecipeWidget> page;
};

void tst_RecipeWidget::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    setProgramDir(dir.path());
    QVERIFY(TestSupport::buildDatabase(dir.filePath(DrugDatabase::drugDatabaseName),
                                       TestSupport::drugSchema() + QString::fromUtf8(fixtureSql)));
    QVERIFY(simulator.startOfferingCurrent(QStringLiteral("1700000000")));
}

void tst_RecipeWidget::init()
{
    QVERIFY(simulator.reset() && simulator.setValue(QStringLiteral("data_version"), QStringLiteral("1700000000")));
    page = std::make_unique<RecipeWidget>();
    page->show();
    // Its record is in before the test, so that it can't arrive in the next one.
    QTRY_VERIFY(!records("recipe_group").isEmpty());
}

QList<QJsonObject> tst_RecipeWidget::records(const char* kind)
{
    QList<QJsonObject> bodies;
    for (const QJsonValue& record : simulator.records(QStringLiteral("/desktop/usage/%1.php").arg(kind)))
        bodies << QJsonDocument::fromJson(record[QStringLiteral("body")].toString().toUtf8()).object();
    return bodies;
}

void tst_RecipeWidget::startSelectsFirstGroupWithOneRecord()
{
    QCOMPARE(list("recipeGroups")->selectedItems(), QList<QListWidgetItem*>{list("recipeGroups")->item(0)});
    QVERIFY(page->findChild<QLabel*>(QStringLiteral("noRecipesImage"))->isVisible());
    // A drug without a synonym must not keep the hidden line's height.
    QVERIFY(list("recipeDrugs")->item(1)->sizeHint().height() < list("recipeDrugs")->item(0)->sizeHint().height());

    QTest::qWait(500);
    const QList<QJsonObject> sent = records("recipe_group");
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent.first()[QStringLiteral("group_id")], QJsonValue(1));
}

void tst_RecipeWidget::filter_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<int>("thenGroupRow");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("capitals typed") << QStringList{"MAŚĆ"} << -1 << QStringList{"Maść borna", "Maść cynkowa"};
    QTest::newRow("synonym") << QStringList{"unguentum"} << -1 << QStringList{"Maść borna"};
    QTest::newRow("first ingredient") << QStringList{"zinci"} << -1 << QStringList{"Maść cynkowa", "Pasta 'Lassara'"};
    QTest::newRow("apostrophe searched for") << QStringList{"pasta 'l"} << -1 << QStringList{"Pasta 'Lassara'"};
    QTest::newRow("only the selected group") << QStringList{"żur"} << -1 << QStringList{};
    QTest::newRow("blanks leave the list") << QStringList{"maść c", "   "} << -1 << QStringList{"Maść cynkowa"};
    QTest::newRow("cleared line shows the group")
        << QStringList{"maść c", ""} << -1 << QStringList{"Maść borna", "Maść cynkowa", "Pasta 'Lassara'"};
    QTest::newRow("text carried to another group") << QStringList{"żurawina"} << 1 << QStringList{"Żurawina w syropie"};
}

void tst_RecipeWidget::filter()
{
    QFETCH(QStringList, typed);
    QFETCH(int, thenGroupRow);
    for (const QString& text : typed)
        page->findChild<QLineEdit*>(QStringLiteral("searchLineEdit"))->setText(text);
    if (thenGroupRow >= 0)
        list("recipeGroups")->setCurrentRow(thenGroupRow);
    QStringList names;
    for (int i = 0; i < list("recipeDrugs")->count(); ++i)
        names << shown(list("recipeDrugs")->itemWidget(list("recipeDrugs")->item(i)), "name");
    QTEST(names, "expected");
}

void tst_RecipeWidget::recipesNumberedWithEmptyBlocksLeftOut()
{
    list("recipeDrugs")->setCurrentRow(0);
    // Number, name, the blocks shown, and each ingredient as name/note/amount.
    QStringList recipes;
    for (QWidget* recipe : page->findChild<QWidget*>(QStringLiteral("scrollAreaWidgetContents"))
                               ->findChildren<DrugRecipeItem*>(QString(), Qt::FindDirectChildrenOnly)) {
        QStringList parts{shown(recipe, "recipeNum"), shown(recipe, "recipeName")};
        for (const char* block : {"frame_2", "realization", "useFrame", "commentsFrame"})
            if (recipe->findChild<QWidget*>(QLatin1String(block))->isVisibleTo(recipe))
                parts << QLatin1String(block);
        auto* substances = recipe->findChild<QListWidget*>(QStringLiteral("substances"));
        for (int row = 0; row < substances->count(); ++row) {
            QWidget* item = substances->itemWidget(substances->item(row));
            parts << shown(item, "name") + "/" + shown(item, "note") + "/" + shown(item, "amount");
        }
        recipes << parts.join(QLatin1Char(' '));
    }
    QCOMPARE(recipes, (QStringList{"1 Maść borna 3% frame_2 realization useFrame commentsFrame "
                                   "Acidum boricum/subtilissime/3,0 Vaselinum album/-/ad 100,0",
                                   "2 - frame_2 realization Acidum boricum/-/5,0",
                                   "3 Maść borna 5% frame_2 useFrame Acidum boricum/-/-"}));
    QTRY_COMPARE(records("recipe_drug").value(0)[QStringLiteral("drug_id")], QJsonValue(10));
}

void tst_RecipeWidget::startUpReloadsAndButtonsSwitchPages()
{
    page.reset();
    MainWindow window;
    window.show();
    // The window's page loads its groups when built and again when the start-up checks are over.
    QTRY_COMPARE_WITH_TIMEOUT(records("recipe_group").size(), 3, 20000);

    auto* drugPage = window.findChild<QWidget*>(QStringLiteral("drugBase"));
    auto* recipesPage = window.findChild<QWidget*>(QStringLiteral("recipes"));
    window.findChild<QPushButton*>(QStringLiteral("recipesButton"))->click();
    QVERIFY(recipesPage->isVisible() && !drugPage->isVisible());
    recipesPage->findChild<QPushButton*>(QStringLiteral("drugBaseButton"))->click();
    QVERIFY(drugPage->isVisible() && !recipesPage->isVisible());
}

QTEST_MAIN(tst_RecipeWidget)
#include "tst_recipewidget.moc"
