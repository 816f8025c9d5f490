#include "appdir.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "drugs/searchlookup.h"
#include "drugs/searchlookupitem.h"
#include "pagefixture.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

const QString squareCorners = QStringLiteral("border-bottom-right-radius: 0px; border-bottom-left-radius: 0px;");

} // namespace

class tst_SearchLookup : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void searchWaitsForPauseInTyping();
    void popupSize_data();
    void popupSize();
    void keysInOpenPopup_data();
    void keysInOpenPopup();
    void clickChoosesDrugAndStopsPendingSearch();
    void onlyTypedTextIsSearched();
    void reusedRowsShowEachSearch_data();
    void reusedRowsShowEachSearch();

private:
    void typeAndWaitForPopup(const QString& text);

    QTemporaryDir dir;
    std::unique_ptr<QWidget> host;
    QLineEdit* editor = nullptr;
    QListWidget* popup = nullptr;
    QTimer* timer = nullptr;
    QElapsedTimer sinceStart;
    // When each search ran, since the start.
    QList<qint64> searchTimes;
};

void tst_SearchLookup::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(dir.isValid());
    setProgramDir(dir.path());
    QVERIFY(PageFixture::createDatabase(dir.path()));
    sinceStart.start();
}

void tst_SearchLookup::init()
{
    host = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(host.get());
    editor = new QLineEdit(host.get());
    editor->setFixedHeight(40);
    editor->setStyleSheet(QStringLiteral("border-radius: 20px;"));
    layout->addWidget(editor);
    layout->addStretch();
    host->resize(500, 400);
    auto* lookup = new SearchLookup(editor);
    popup = host->findChild<QListWidget*>(QStringLiteral("searchPopup"));
    timer = lookup->findChild<QTimer*>(QStringLiteral("searchTimer"));
    // Connected after the search itself, so noted when it has run.
    connect(timer, &QTimer::timeout, host.get(), [this] { searchTimes.append(sinceStart.elapsed()); });
    host->show();
    QVERIFY(QTest::qWaitForWindowExposed(host.get()));
    editor->setFocus();
    searchTimes.clear();
}

void tst_SearchLookup::cleanup()
{
    host.reset();
    DrugViewModel::instance()->clearDrugs();
}

void tst_SearchLookup::typeAndWaitForPopup(const QString& text)
{
    QTest::keyClicks(editor, text);
    QTRY_VERIFY(popup->isVisible());
    QVERIFY(!timer->isActive());
}

void tst_SearchLookup::searchWaitsForPauseInTyping()
{
    QList<qint64> keyTimes;
    for (const QChar c : QStringLiteral("Apap")) {
        QTest::qWait(60);
        QTest::keyClick(editor, c.toLatin1());
        keyTimes.append(sinceStart.elapsed());
    }

    QTRY_COMPARE(searchTimes.size(), 1);
    QTest::qWait(400);
    QCOMPARE(searchTimes.size(), 1);

    // No search before the line has been still for the whole wait (a coarse
    // timer may fire up to 5% early), and the one search follows the last key.
    const qint64 search = searchTimes.first();
    QVERIFY2(search - keyTimes.last() >= 190,
             qPrintable(QStringLiteral("searched %1 ms after the last key").arg(search - keyTimes.last())));
}

void tst_SearchLookup::popupSize_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("rowsInView");

    QTest::newRow("three drugs") << "Apap" << 3 << 3;
    QTest::newRow("twenty drugs, five in view") << "Testowy" << 20 << 5;
}

void tst_SearchLookup::popupSize()
{
    QFETCH(QString, text);
    QFETCH(int, rows);
    QFETCH(int, rowsInView);

    typeAndWaitForPopup(text);
    QCOMPARE(popup->count(), rows);

    const int first = popup->item(0)->sizeHint().height();
    const int other = popup->item(1)->sizeHint().height();
    QCOMPARE(first, other + 20);
    QCOMPARE(popup->height(), first + (rowsInView - 1) * other + 2 * popup->frameWidth());
    // The offscreen platform shifts a new window by its frame margin of 2 pixels.
    const QPoint offset = popup->pos() - editor->mapToGlobal(QPoint(8, int(editor->height() * 0.75)));
    QVERIFY2(qAbs(offset.x()) <= 2 && qAbs(offset.y()) <= 2, qPrintable(QStringLiteral("pop-up %1 pixels off")
                                                                           .arg(offset.manhattanLength())));
    QVERIFY(editor->styleSheet().contains(squareCorners));

    auto* row = qobject_cast<SearchLookupItem*>(popup->itemWidget(popup->item(0)));
    QCOMPARE(row->getDrug().name.left(text.size()), text);
}

void tst_SearchLookup::keysInOpenPopup_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("staysOpen");
    QTest::addColumn<QString>("lineAfter");

    // Only the mouse chooses a drug: Return closes the list whatever row is current.
    QTest::newRow("Return") << int(Qt::Key_Return) << false << "Apap";
    QTest::newRow("Escape") << int(Qt::Key_Escape) << false << "Apap";
    QTest::newRow("Down moves in the list") << int(Qt::Key_Down) << true << "Apap";
    QTest::newRow("a letter goes on in the line") << int(Qt::Key_X) << false << "Apapx";
}

void tst_SearchLookup::keysInOpenPopup()
{
    QFETCH(int, key);
    QFETCH(bool, staysOpen);
    QFETCH(QString, lineAfter);

    QSignalSpy added(DrugViewModel::instance(), &DrugViewModel::drugAdded);
    typeAndWaitForPopup(QStringLiteral("Apap"));
    popup->setCurrentRow(1);

    QTest::keyClick(popup, Qt::Key(key));

    QCOMPARE(popup->isVisible(), staysOpen);
    QCOMPARE(editor->styleSheet().contains(squareCorners), staysOpen);
    QCOMPARE(editor->text(), lineAfter);
    QCOMPARE(added.count(), 0);
    // An edit passed on to the line waits for its own search.
    QCOMPARE(timer->isActive(), lineAfter != QLatin1String("Apap"));
}

void tst_SearchLookup::clickChoosesDrugAndStopsPendingSearch()
{
    QSignalSpy added(DrugViewModel::instance(), &DrugViewModel::drugAdded);
    typeAndWaitForPopup(QStringLiteral("Apap"));
    const QString vid = qobject_cast<SearchLookupItem*>(popup->itemWidget(popup->item(1)))->getDrug().vid;

    QTest::keyClick(editor, Qt::Key_Space);
    QVERIFY(timer->isActive());
    QTest::mouseClick(popup->viewport(), Qt::LeftButton, Qt::NoModifier,
                      popup->visualItemRect(popup->item(1)).center());

    QCOMPARE(added.count(), 1);
    QCOMPARE(DrugViewModel::instance()->firstDrug()->vid, vid);
    QVERIFY(!popup->isVisible());
    QCOMPARE(editor->text(), QStringLiteral("Apap "));
    QTest::qWait(300);
    QCOMPARE(searchTimes.size(), 1);
}

void tst_SearchLookup::onlyTypedTextIsSearched()
{
    // Text set by the program (a line filled by a scan) starts no wait.
    editor->setText(QStringLiteral("5900000000011"));
    QVERIFY(!timer->isActive());

    // A line the user empties waits like any edit, then shows nothing.
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Backspace);
    QVERIFY(timer->isActive());
    QTRY_COMPARE(searchTimes.size(), 1);
    QVERIFY(!popup->isVisible());
}

void tst_SearchLookup::reusedRowsShowEachSearch_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("twenty, three, twenty again") << QStringList{"Testowy", "Apap", "Testowy"};
    QTest::newRow("three, then twenty") << QStringList{"Apap", "Testowy"};
}

// The pop-up keeps its row widgets from one search to the next: each must show
// the new search's drug, the first keep its deeper top, none stay lit.
void tst_SearchLookup::reusedRowsShowEachSearch()
{
    QFETCH(QStringList, texts);
    for (const QString& text : texts) {
        popup->hide();
        editor->clear();
        typeAndWaitForPopup(text);
        const QList<Drug> found = DrugDatabase::searchDrugs(text.split(QLatin1Char(' ')), 20);
        QCOMPARE(popup->count(), found.size());
        for (int i = 0; i < found.size(); ++i) {
            auto* row = qobject_cast<SearchLookupItem*>(popup->itemWidget(popup->item(i)));
            QCOMPARE(row->getDrug().vid, found.at(i).vid);
            QCOMPARE(row->findChild<QLabel*>(QStringLiteral("labelName"))->text(), found.at(i).name);
            QVERIFY(!row->findChild<QFrame*>(QStringLiteral("mainFrame"))->property("urgent").toBool());
        }
        QCOMPARE(popup->item(0)->sizeHint().height(), popup->item(1)->sizeHint().height() + 20);
        // The pointer rests on the second row when the next search comes.
        QEvent enter(QEvent::Enter);
        QCoreApplication::sendEvent(popup->itemWidget(popup->item(1)), &enter);
    }
}

QTEST_MAIN(tst_SearchLookup)
#include "tst_searchlookup.moc"
