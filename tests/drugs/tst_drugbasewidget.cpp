#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugbasewidget.h"
#include "drugs/drugsubstituteviewmodel.h"
#include "drugs/drugviewmodel.h"
#include "drugs/searchlistitem.h"
#include "pagefixture.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {
const QString selectedStyle = QStringLiteral("color: #df512c;");
const QString restingStyle = QStringLiteral("color: #082e56;");
const QStringList paneNames { "Drug_Info", "SekcjeWidget", "warningsFrame", "gifFrame", "drugVersionsList" };
} // namespace

class tst_DrugBaseWidget : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        setProgramDir(dir.path());
        QVERIFY(PageFixture::createDatabase(dir.path()));
        DrugSubstituteViewModel::instance();
        DrugSubstituteViewModel::connectToDrugViewModel();
    }

    void init()
    {
        page = std::make_unique<DrugBaseWidget>();
        page->resize(1100, 700);
        page->show();
        QVERIFY(QTest::qWaitForWindowExposed(page.get()));
        selectedDrugs = list("selectedDrugs");
        tabs = page->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    }

    void cleanup()
    {
        DrugViewModel::instance()->clearDrugs();
        page.reset();
        // Signals queued for the page die with it.
        QCoreApplication::processEvents();
    }

    void pictureAndPanesFollowTheList()
    {
        auto* picture = page->findChild<QLabel*>(QStringLiteral("lookForDrugsImage"));
        QVERIFY(add(QStringLiteral("11")));
        QVERIFY(picture->isHidden());
        QCOMPARE(nameStyles(selectedDrugs), QStringList { selectedStyle });
        QCOMPARE(shownPanes(), paneNames.size());

        QVERIFY(add(QStringLiteral("12")));
        QVERIFY(add(QStringLiteral("13")));
        QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("clearDrugs")), Qt::LeftButton);

        // The list goes at once; the panes follow the queued selection change.
        QCOMPARE(selectedDrugs->count(), 0);
        QVERIFY(!picture->isHidden());
        QTRY_COMPARE(shownPanes(), 0);

        // The model still counts from its old selection, so previous points past the single row.
        QSignalSpy changed(DrugViewModel::instance(), &DrugViewModel::selectedDrugChanged);
        QVERIFY(add(QStringLiteral("31")));
        QCOMPARE(QList<QVariantList>(changed), QList<QVariantList> { { 1 } });
        QCOMPARE(nameStyles(selectedDrugs), QStringList { selectedStyle });
        QCOMPARE(shownPanes(), paneNames.size());
    }

    void clickOnRowMovesHighlight()
    {
        QVERIFY(add(QStringLiteral("31")));
        QVERIFY(add(QStringLiteral("11")));
        QVERIFY(add(QStringLiteral("13")));
        QSignalSpy changed(DrugViewModel::instance(), &DrugViewModel::selectedDrugChanged);
        QTest::mouseClick(selectedDrugs->viewport(), Qt::LeftButton, Qt::NoModifier,
                          selectedDrugs->visualItemRect(selectedDrugs->item(2)).center());
        QCOMPARE(QList<QVariantList>(changed), QList<QVariantList> { { 0 } });
        QTRY_COMPARE(nameStyles(selectedDrugs), (QStringList { restingStyle, restingStyle, selectedStyle }));
        QCOMPARE(DrugViewModel::instance()->selectedDrug()->vid, QStringLiteral("31"));
    }

    void versionsListedInReverseAndClickAddsRow()
    {
        QVERIFY(add(QStringLiteral("12")));
        QListWidget* versions = list("drugVersionsList");

        // The database gives 12, 13, 11.
        QCOMPARE(rowVids(versions), (QStringList { "11", "13", "12" }));
        QCOMPARE(nameStyles(versions), (QStringList { restingStyle, restingStyle, selectedStyle }));

        tabs->setCurrentWidget(page->findChild<QWidget*>(QStringLiteral("drugVersionTab")));
        QTest::mouseClick(versions->viewport(), Qt::LeftButton, Qt::NoModifier,
                          versions->visualItemRect(versions->item(1)).center());
        QTRY_COMPARE(selectedDrugs->count(), 2);
        QCOMPARE(DrugViewModel::instance()->firstDrug()->vid, QStringLiteral("13"));
    }

    // The tabs behind the information tab fill a frame after a scan; one
    // opened before that shows its rows all the same.
    void tabOpenedAtOnceIsFilled_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("rows");
        QTest::newRow("versions") << "drugVersionTab" << "drugVersionsList" << 3;
        QTest::newRow("substitutes") << "substitutesTab" << "substituteDrugsList" << 1;
    }

    void tabOpenedAtOnceIsFilled()
    {
        QFETCH(QString, tab);
        QFETCH(QString, list);
        QFETCH(int, rows);
        DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(QStringLiteral("11")));
        QTRY_COMPARE(selectedDrugs->count(), 1);
        QVERIFY(page->findChild<QTimer*>(QStringLiteral("hiddenTabsTimer"))->isActive());
        tabs->setCurrentWidget(page->findChild<QWidget*>(tab));
        QCOMPARE(this->list(qPrintable(list))->count(), rows);
    }

    void showTab_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("page");

        QTest::newRow("blanks around the name") << "  Opis " << "Sekcje_opisowe_tab";
        QTest::newRow("substitutes with their count") << "Zamienniki" << "substitutesTab";
    }

    void showTab()
    {
        QFETCH(QString, name);
        QFETCH(QString, page);

        QVERIFY(add(QStringLiteral("11")));
        tabs->setCurrentWidget(this->page->findChild<QWidget*>(QStringLiteral("warningsTab")));

        this->page->showTab(name);
        QCOMPARE(tabs->currentWidget()->objectName(), page);
    }

    // A click on a substitute is followed to its record and selection by the drug page reporting test.
    void substitutesTabFollowsTheDrug()
    {
        auto* substitutesTab = page->findChild<QWidget*>(QStringLiteral("substitutesTab"));

        // The fixture's drugs have no GIF decisions, so their tab is gone too.
        QVERIFY(add(QStringLiteral("31")));
        QCOMPARE(tabs->indexOf(substitutesTab), -1);
        QCOMPARE(tabs->count(), 4);

        // The tab that an earlier drug lost comes back at the end.
        QVERIFY(add(QStringLiteral("11")));
        QCOMPARE(tabs->count(), 5);
        QCOMPARE(tabs->indexOf(substitutesTab), tabs->count() - 1);
        QCOMPARE(tabs->tabText(tabs->count() - 1), QStringLiteral("Zamienniki : 1"));
        QListWidget* substitutes = list("substituteDrugsList");
        QCOMPARE(rowVids(substitutes), QStringList { "12" });
    }

private:
    bool add(const QString& vid)
    {
        const int rows = selectedDrugs->count();
        DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
        // The page catches up on the next turn of the event loop.
        if (selectedDrugs->count() != rows) {
            qWarning() << "the row came before the event loop turned";
            return false;
        }
        const bool came = QTest::qWaitFor([&] { return selectedDrugs->count() == rows + 1; });
        QCoreApplication::processEvents();
        if (!TestSupport::waitForHiddenTabs(page.get()))
            return false;
        return came;
    }
    QListWidget* list(const char* name) const { return page->findChild<QListWidget*>(QLatin1String(name)); }

    QStringList nameStyles(QListWidget* list) const
    {
        QStringList styles;
        for (int row = 0; row < list->count(); ++row)
            styles << qobject_cast<SearchListItem*>(list->itemWidget(list->item(row)))->labelName()->styleSheet();
        return styles;
    }

    QStringList rowVids(QListWidget* list) const
    {
        QStringList vids;
        for (int i = 0; i < list->count(); ++i)
            vids << list->item(i)->data(Qt::UserRole).toString();
        return vids;
    }

    // The panes go together: all of them or none, a mixed state is a fault of its own.
    int shownPanes() const
    {
        int shown = 0;
        for (const QString& name : paneNames)
            shown += page->findChild<QWidget*>(name)->isHidden() ? 0 : 1;
        return shown;
    }

    QTemporaryDir dir;
    std::unique_ptr<DrugBaseWidget> page;
    QListWidget* selectedDrugs = nullptr;
    QTabWidget* tabs = nullptr;
};

QTEST_MAIN(tst_DrugBaseWidget)
#include "tst_drugbasewidget.moc"
