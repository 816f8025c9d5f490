#include "db/drugdatabase.h"
#include "drugs/collapsiblesection.h"
#include "drugs/descrtab.h"
#include "drugs/drugbasewidget.h"
#include "drugs/drugviewmodel.h"
#include "testsupport.h"
#include "utils/imageviewer.h"

#include <QApplication>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <memory>

// The description and warning tabs of the drug page over the demo database.
class tst_DrugTabs : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        page = std::make_unique<DrugBaseWidget>();
        page->resize(1300, 900);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
    }

    void cleanup()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (qobject_cast<ImageViewer*>(window))
                delete window;
        }
        DrugViewModel::instance()->clearDrugs();
        QCoreApplication::processEvents();
    }

    void columnsOfTheDrug_data()
    {
        QTest::addColumn<QString>("vid");
        QTest::addColumn<int>("descriptions");
        QTest::addColumn<QStringList>("special");
        QTest::addColumn<QStringList>("food");

        QTest::newRow("special, food, a child, grapefruit twice, one without pictogram")
            << QStringLiteral("100001") << 18
            << QStringList { "Prowadzenie pojazdów", "Inne leki z paracetamolem", "Nie stosować u dzieci poniżej 6 lat" }
            << QStringList { "Alkohol", "Alkohol – uszkodzenie wątroby", "Sok grejpfrutowy", "Sok grejpfrutowy" };
        QTest::newRow("only food") << QStringLiteral("100071") << 5 << QStringList()
                                   << QStringList { "Produkty mleczne", "Wapń i żelazo w diecie" };
        QTest::newRow("no description, empty warns") << QStringLiteral("100070") << 0 << QStringList() << QStringList();
    }

    void columnsOfTheDrug()
    {
        QFETCH(QString, vid);
        QFETCH(int, descriptions);
        QFETCH(QStringList, special);
        QFETCH(QStringList, food);
        // A drug with descriptions and warnings first, so that its sections have to go.
        select(QStringLiteral("100053"));
        select(vid);

        QCOMPARE(sections("descFrame").size(), descriptions);
        QCOMPARE(shown("descScrollArea"), descriptions > 0);
        QCOMPARE(shown("noDescLabel"), descriptions == 0);
        QCOMPARE(titles("warnFrame"), special);
        QCOMPARE(titles("foodFrame"), food);
        QCOMPARE(shown("noWarnLabel"), special.isEmpty());
        QCOMPARE(shown("NoFoodLabel"), food.isEmpty());
        // Every warning has its pictogram but the one the resources lack.
        for (CollapsibleSection* section : sections("warnFrame")) {
            auto* title = section->findChild<QPushButton*>(QString(), Qt::FindDirectChildrenOnly);
            QCOMPARE(title->icon().isNull(), section->title() == QStringLiteral("Nie stosować u dzieci poniżej 6 lat"));
        }
    }

    // The title and the arrow both toggle: one opens, the other closes.
    void sectionOpensByTitleClosesByArrow()
    {
        select(QStringLiteral("100001"));
        page->showTab(QStringLiteral("Opis"));
        CollapsibleSection* section = sections("descFrame").at(2);
        QCOMPARE(section->contentArea()->height(), 0);
        QTest::mouseClick(section->findChild<QPushButton*>(QString(), Qt::FindDirectChildrenOnly), Qt::LeftButton);
        QVERIFY(section->isExpanded());
        // Open, the area shows the whole text and its print button.
        auto* tab = section->contentArea()->findChild<DescrTab*>();
        QTRY_COMPARE(section->contentArea()->height(), section->contentArea()->layout()->sizeHint().height());
        QVERIFY(tab->height() > 0);
        QVERIFY(section->contentArea()->height() >= tab->geometry().bottom());

        QTest::mouseClick(section->findChild<QToolButton*>(QString(), Qt::FindDirectChildrenOnly), Qt::LeftButton);
        QVERIFY(!section->isExpanded());
        QTRY_COMPARE(section->contentArea()->height(), 0);
    }

    void printOpensPagesOfTheDrug()
    {
        select(QStringLiteral("100001"));
        CollapsibleSection* section = sections("descFrame").first();
        auto* tab = section->contentArea()->findChild<DescrTab*>();

        const QList<QPixmap> pages = tab->printPages();
        QVERIFY(!pages.isEmpty());
        // The drug's data head the first page, under the margin.
        const QImage head = pages.first().toImage().convertToFormat(QImage::Format_RGB32).copy(0, 40, 595, 40);
        QImage blank(head.size(), QImage::Format_RGB32);
        blank.fill(Qt::white);
        QVERIFY(head != blank);

        QTest::mouseClick(tab->findChild<QPushButton*>(QStringLiteral("printButton")), Qt::LeftButton);
        QWidget* viewer = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            viewer = qobject_cast<ImageViewer*>(window) ? window : viewer;
        QVERIFY(viewer && viewer->isVisible());
        QCOMPARE(viewer->windowTitle(), section->title());

        // Regression: a closed viewer kept its full-size pages to the end of the run.
        QPointer<QWidget> closed(viewer);
        viewer->close();
        QTRY_VERIFY(closed.isNull());
    }

private:
    void select(const QString& vid)
    {
        DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
        // The page rebuilds its tabs on the next turn of the event loop.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        QVERIFY(TestSupport::waitForHiddenTabs(page.get()));
    }
    QList<CollapsibleSection*> sections(const char* frame) const
    {
        auto* column = page->findChild<QWidget*>(QLatin1String(frame));
        return column->findChildren<CollapsibleSection*>(QString(), Qt::FindDirectChildrenOnly);
    }
    QStringList titles(const char* frame) const
    {
        QStringList found;
        for (CollapsibleSection* section : sections(frame))
            found << section->title();
        return found;
    }
    bool shown(const char* name) const
    {
        auto* widget = page->findChild<QWidget*>(QLatin1String(name));
        return widget && !widget->isHidden();
    }

    QTemporaryDir dir;
    std::unique_ptr<DrugBaseWidget> page;
};

QTEST_MAIN(tst_DrugTabs)
#include "tst_drugtabs.moc"
