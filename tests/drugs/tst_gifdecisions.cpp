#include "db/drugdatabase.h"
#include "drugs/drugbasewidget.h"
#include "drugs/drugviewmodel.h"
#include "drugs/gifbubble.h"
#include "drugs/giflistitem.h"
#include "mainwindow.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/imageviewer.h"
#include "utils/keyboardreader.h"
#include "utils/pdfdownloader.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

// The GIF tab and the bubbles of a scan over the demo database, with the
// documents fetched from the simulator and rendered by poppler.
class tst_GifDecisions : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(window = TestSupport::demoWindow(dir.path(), simulator));
        page = window->findChild<DrugBaseWidget*>();
        tabs = window->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        gifTab = window->findChild<QWidget*>(QStringLiteral("GIF_tab"));
    }

    void cleanup()
    {
        for (GifBubble* bubble : bubbles())
            bubble->Hide();
        // No download of one test may end in the next.
        QTRY_VERIFY_WITH_TIMEOUT(inFlight().isEmpty(), 20000);
        QVERIFY(simulator.reset());
    }

    void tabFollowsTheSelectedDrug()
    {
        select(QStringLiteral("100050"));
        QStringList dates;
        for (GifListItem* item : window->findChildren<GifListItem*>())
            dates << item->text();
        QCOMPARE(dates, QStringList({ "2025-02-11", "2025-01-20", "2023-09-05" }));
        // The newest document comes at once; its path has back-slashes.
        QTRY_VERIFY_WITH_TIMEOUT(shows("decyzja_41"), 20000);

        // Regression: the downloader went with its signal while the viewer still
        // read pages through it, so printing read a freed source.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath(QStringLiteral("printed.pdf")));
        viewer()->print(&printer);
        QVERIFY(QFileInfo(printer.outputFileName()).size() > 20000); // the page, not a blank sheet

        QTest::mouseClick(window->findChildren<GifListItem*>().at(1), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(shows("decyzja_17"), 20000);

        select(QStringLiteral("100005"));
        QCOMPARE(tabs->indexOf(gifTab), -1);
        QVERIFY(window->findChildren<GifListItem*>().isEmpty() && !viewer());

        // The tab comes back at the end, before the substitutes that follow it.
        select(QStringLiteral("100001"));
        QCOMPARE(tabs->tabText(tabs->count() - 2), QStringLiteral("Decyzje GIF"));
        QCOMPARE(tabs->widget(tabs->count() - 2), gifTab);
    }

    void scanStacksBubblesThatCloseTogether()
    {
        window->hide();
        window->onNewReading(QStringLiteral("5909990000609"));
        QCoreApplication::processEvents();
        const QList<GifBubble*> shown = bubbles();
        QCOMPARE(shown.size(), 3);
        // The newest on top; descriptions stored in capitals show with one capital first.
        const QStringList texts = { "Decyzja uchylająca wstrzymanie w obrocie serii produktu leczniczego",
                                    "Decyzja o wstrzymaniu w obrocie na terenie całego kraju serii produktu leczniczego",
                                    "Decyzja o wycofaniu z obrotu na terenie całego kraju serii produktu leczniczego" };
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        for (int n = 0; n < 3; ++n) {
            const int i = 3 - n;
            QCOMPARE(shown.at(n)->pos(), QPoint(screen.right() - screen.left() - 336,
                                                screen.bottom() - screen.top() + 1 - 85 * i - 20));
            QCOMPARE(shown.at(n)->findChild<QPushButton*>()->text().simplified(), texts.at(n));
        }

        auto* timer = shown.first()->findChild<QTimer*>();
        QVERIFY(timer->isActive());
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(shown.first(), &enter);
        QVERIFY(!timer->isActive());

        // The scan's own document first, so that it can't land after the click's.
        QTRY_VERIFY_WITH_TIMEOUT(viewer(), 20000);
        // The middle one: the decision of 2025-01-20, a path with back-slashes.
        QTest::mouseClick(shown.at(1)->findChild<QPushButton*>(), Qt::LeftButton);
        QVERIFY(bubbles().isEmpty());
        QVERIFY(window->isVisible());
        QCOMPARE(tabs->currentWidget(), gifTab);
        QTRY_VERIFY_WITH_TIMEOUT(shows("decyzja_17"), 20000);

        window->onNewReading(QStringLiteral("5909990000609"));
        emit KeyboardReader::instance()->escape();
        QVERIFY(bubbles().isEmpty());
    }

    void failedDocumentGivesAlert()
    {
        QVERIFY(simulator.setFault(QStringLiteral("/images/*"), QStringLiteral("404")));
        select(QStringLiteral("100020"));
        auto* statusBar = window->findChild<QStatusBar*>();
        QTRY_COMPARE_WITH_TIMEOUT(statusBar->currentMessage(),
                                  QStringLiteral("Wystąpił błąd podczas pobierania decyzji GIF!"), 20000);
        QVERIFY(statusBar->styleSheet().contains(QStringLiteral("#e3502a")));
        QVERIFY(!viewer()); // and cleanup() finds the failed download gone
    }

    void clickWhileADocumentComesIn_data()
    {
        QTest::addColumn<int>("second"); // the item clicked while the 2023-09-05 decision comes in
        QTest::addColumn<QString>("shown");

        QTest::newRow("the same again: joins its download") << 2 << "decyzja_512";
        QTest::newRow("another one: the earlier doesn't cover it") << 1 << "decyzja_17";
    }

    // Regression: every click started a download of its own that nothing
    // cancelled, so two downloads of one document truncated and deleted each
    // other's files, and an earlier document landed over a later one.
    void clickWhileADocumentComesIn()
    {
        QFETCH(int, second);
        QFETCH(QString, shown);
        select(QStringLiteral("100050"));
        QTRY_VERIFY_WITH_TIMEOUT(shows("decyzja_41"), 20000);
        const QList<GifListItem*> items = window->findChildren<GifListItem*>();
        QTest::mouseClick(items.at(1), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(shows("decyzja_17"), 20000); // on disk from now on
        // The decision of 2023-09-05 comes from the network, slowly.
        const QDir temp(dir.filePath(QStringLiteral("temp")));
        for (const QString& name : temp.entryList({QStringLiteral("decyzja_512*")}, QDir::Files))
            QVERIFY(QFile::remove(temp.filePath(name)));
        QVERIFY(simulator.reset());
        QVERIFY(simulator.setFault(QStringLiteral("/images/*"), QStringLiteral("slow")));
        window->findChild<QStatusBar*>()->clearMessage(); // an alert of the test before

        QTest::mouseClick(items.at(2), Qt::LeftButton);
        QTRY_COMPARE(simulator.records(QStringLiteral("/images/*")).size(), 1);
        QTest::mouseClick(items.at(second), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(inFlight().isEmpty(), 20000);
        QVERIFY(shows(shown));
        QCOMPARE(simulator.records(QStringLiteral("/images/*")).size(), 1);
        QVERIFY(window->findChild<QStatusBar*>()->currentMessage()
                != QStringLiteral("Wystąpił błąd podczas pobierania decyzji GIF!"));
    }

private:
    void select(const QString& vid)
    {
        DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
        QCoreApplication::processEvents(); // the page rebuilds on the model's queued signals
        QVERIFY(TestSupport::waitForHiddenTabs(window.get()));
    }
    ImageViewer* viewer() const
    {
        const auto viewers = window->findChildren<ImageViewer*>(QStringLiteral("gifPdfViewer"));
        return viewers.size() == 1 ? viewers.first() : nullptr;
    }
    bool shows(const QString& stem) const
    {
        // The viewer reads its pages through the downloader, its child.
        auto* source = viewer() ? viewer()->findChild<PDFDownloader*>() : nullptr;
        return source && source->page(0).toImage() == QImage(dir.filePath("temp/" + stem + ".png"));
    }
    // The page holds the downloads in flight.
    QList<PDFDownloader*> inFlight() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return page->findChildren<PDFDownloader*>(QString(), Qt::FindDirectChildrenOnly);
    }

    // those shown, top first
    static QList<GifBubble*> bubbles()
    {
        QList<GifBubble*> shown;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* bubble = qobject_cast<GifBubble*>(widget); bubble && bubble->isVisible())
                shown << bubble;
        }
        std::sort(shown.begin(), shown.end(), [](GifBubble* a, GifBubble* b) { return a->y() < b->y(); });
        return shown;
    }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    DrugBaseWidget* page = nullptr;
    QTabWidget* tabs = nullptr;
    QWidget* gifTab = nullptr;
};

QTEST_MAIN(tst_GifDecisions)
#include "tst_gifdecisions.moc"
