#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "drugs/druginfowidget.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "simulator.h"
#include "utils/imageviewer.h"
#include "utils/networklimits.h"

#include <QApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {
const QString imageKey = QStringLiteral("/files/check.php?a=getImage");
const QString uploadPath = QStringLiteral("/desktop/new_drug_image.php");

QList<ImageViewer*> viewers()
{
    QList<ImageViewer*> found;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* viewer = qobject_cast<ImageViewer*>(widget))
            found << viewer;
    return found;
}
} // namespace

// The information tab inside the program's window, over the demo database, with
// pictures and leaflets from the simulator.
class tst_DrugInfoWidget : public QObject {
    Q_OBJECT

public slots:
    void openUrl(const QUrl& url) { openedUrls << url; }

private slots:
    void initTestCase();
    void cleanup();
    void redrawFollowsTheDrug_data();
    void redrawFollowsTheDrug();
    void prices_data();
    void prices();
    void pictureCachedByGroupOrPlaceholder_data();
    void pictureCachedByGroupOrPlaceholder();
    void uploadSendsPictureAndShowsRefusal();
    void leafletOpensOnlyForTheSelectedDrug_data();
    void leafletOpensOnlyForTheSelectedDrug();
    void fullChplAndSubstitutes();

private:
    void select(const QString& vid)
    {
        DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(vid));
        QCoreApplication::processEvents();
        // The redraw clears the picture; one comes from the cache, the service or
        // the placeholder, so no answer is left to arrive in the next test.
        QTRY_VERIFY(!part<QLabel>("DrugImage")->pixmap(Qt::ReturnByValue).isNull());
    }
    template <typename T> T* part(const char* name) const { return info->findChild<T*>(QLatin1String(name)); }
    static QString text(QObject* item, const char* label) { return item->findChild<QLabel*>(QLatin1String(label))->text(); }

    QTemporaryDir dir;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    DrugInfoWidget* info = nullptr;
    QList<QUrl> openedUrls;
};

void tst_DrugInfoWidget::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    setProgramDir(dir.path());
    QVERIFY(QFile::copy(QStringLiteral(QUILLARD_BINARY_DIR "/bin/") + DrugDatabase::drugDatabaseName,
                        dir.filePath(DrugDatabase::drugDatabaseName)));
    // The program's service addresses are compiled in, so the simulator takes that port.
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    // The start-up checks find the base current and leave it in place.
    QVERIFY(simulator.setValue(QStringLiteral("data_version"), DrugDatabase::dataVersion()));
    window = std::make_unique<MainWindow>(nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(simulator.records(QStringLiteral("/")).size(), 3, 20000);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    info = window->findChild<DrugInfoWidget*>();
    QDesktopServices::setUrlHandler(QStringLiteral("http"), this, "openUrl");
}

void tst_DrugInfoWidget::cleanup()
{
    qDeleteAll(viewers());
    DrugViewModel::instance()->clearDrugs();
    NetworkLimits::setTransferTimeout(30000);
    QVERIFY(simulator.reset());
    // A leaflet rendered once opens at once, without a download to interrupt.
    QVERIFY(QDir(dir.filePath(QStringLiteral("temp"))).removeRecursively());
    QDir cache(dir.filePath(QStringLiteral("cache")));
    QVERIFY(cache.removeRecursively() && cache.mkpath(QStringLiteral(".")));
}

void tst_DrugInfoWidget::redrawFollowsTheDrug_data()
{
    QTest::addColumn<QString>("vid");
    QTest::addColumn<QString>("indications");
    QTest::addColumn<bool>("leaflet");
    QTest::addColumn<bool>("substitutes");
    const QString first = DrugDatabase::indicationsById(QStringLiteral("1"));
    QTest::newRow("leaflet and substitutes") << "100001" << first << true << true;
    QTest::newRow("empty leaflet") << "100003" << first << false << true;
    QTest::newRow("iid -1") << "100070" << "Brak wskazań wg ChPL" << false << false;
}

void tst_DrugInfoWidget::redrawFollowsTheDrug()
{
    QFETCH(QString, vid);
    QFETCH(QString, indications);
    QFETCH(bool, leaflet);
    QFETCH(bool, substitutes);
    select(vid);
    const Drug drug = DrugDatabase::drugByVid(vid);
    QCOMPARE(text(info, "Name"), drug.name);
    QCOMPARE(text(info, "Indication"), drug.status);
    QCOMPARE(text(info, "label_7"), indications);
    QCOMPARE(!part<QPushButton>("printButton")->isHidden(), leaflet);
    QCOMPARE(!part<QPushButton>("pushButton_2")->isHidden(), substitutes);
}

void tst_DrugInfoWidget::prices_data()
{
    QTest::addColumn<QStringList>("vids");
    QTest::addColumn<QString>("fullPrice");
    QTest::addColumn<QStringList>("refunds");
    QTest::newRow("full price and ryczałt") << QStringList { "100001" } << "9,99 zł" << QStringList { "ryczałt" };
    QTest::newRow("two 100% rows: the last wins") << QStringList { "100091" } << "19,60 zł" << QStringList {};
    QTest::newRow("no 100% row keeps the previous full price")
        << QStringList { "100001", "100080" } << "9,99 zł" << QStringList { "ryczałt", "50%" };
}

void tst_DrugInfoWidget::prices()
{
    QFETCH(QStringList, vids);
    QFETCH(QString, fullPrice);
    QFETCH(QStringList, refunds);
    for (const QString& vid : vids)
        select(vid);
    QCOMPARE(text(part<QWidget>("fullPriceItem"), "value"), fullPrice);
    QStringList levels;
    QLayout* layout = part<QWidget>("refundPriceList")->layout();
    for (int i = 0; i < layout->count(); ++i)
        levels << text(layout->itemAt(i)->widget(), "xsName");
    QCOMPARE(levels, refunds);
}

void tst_DrugInfoWidget::pictureCachedByGroupOrPlaceholder_data()
{
    QTest::addColumn<QString>("imageSource");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QStringList>("vids"); // two drugs of one group
    QTest::addColumn<QStringList>("cached");
    const QStringList group1 { "100001", "100002" };
    QTest::newRow("picture") << "picture" << "" << group1 << QStringList { "1.png" };
    QTest::newRow("empty array") << "picture" << "" << QStringList { "100020", "100021" } << QStringList();
    QTest::newRow("bytes that are no picture") << "notimage" << "" << group1 << QStringList();
    QTest::newRow("answer that is no JSON") << "picture" << "badjson" << group1 << QStringList();
    QTest::newRow("service that never answers") << "picture" << "noanswer" << group1 << QStringList();
}

// Without a picture the placeholder and the upload button show, nothing is
// cached, and the group's next drug asks the service again.
void tst_DrugInfoWidget::pictureCachedByGroupOrPlaceholder()
{
    QFETCH(QString, imageSource);
    QFETCH(QString, fault);
    QFETCH(QStringList, vids);
    QFETCH(QStringList, cached);
    NetworkLimits::setTransferTimeout(500);
    QVERIFY(simulator.setValue(QStringLiteral("image_src"), imageSource));
    if (!fault.isEmpty())
        QVERIFY(simulator.setFault(imageKey, fault));
    select(vids.at(0));
    QCOMPARE(part<QPushButton>("pushButton")->isHidden(), !cached.isEmpty());
    QCOMPARE(QDir(dir.filePath(QStringLiteral("cache"))).entryList(QDir::Files), cached);
    select(vids.at(1));
    QTest::qWait(300);
    QCOMPARE(simulator.records(imageKey).size(), cached.isEmpty() ? 2 : 1);
}

void tst_DrugInfoWidget::uploadSendsPictureAndShowsRefusal()
{
    QVERIFY(simulator.setFault(uploadPath, QStringLiteral("reject")));
    QImage photo(40, 30, QImage::Format_RGB32);
    photo.fill(QColor(10, 120, 200));
    const QString file = dir.filePath(QStringLiteral("photo.png"));
    QVERIFY(photo.save(file));
    select(QStringLiteral("100020"));

    // The refusal comes as a modal box: note its text and close it.
    QStringList shown;
    QTimer answerer;
    connect(&answerer, &QTimer::timeout, this, [&shown] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            shown << box->text();
            box->button(QMessageBox::Ok)->click();
        }
    });
    answerer.start(20);
    info->sendImage(file);
    QTRY_COMPARE(shown, QStringList { "Serwer odrzucił dane (symulator)" });

    const QJsonObject body = QJsonDocument::fromJson(
        simulator.records(uploadPath).first()[QStringLiteral("body")].toString().toUtf8()).object();
    QCOMPARE(body.keys(), (QStringList { "app_key", "image", "send_date", "vid" }));
    QCOMPARE(body[QStringLiteral("app_key")].toString(), QSettings().value(QStringLiteral("app_key")).toString());
    QCOMPARE(body[QStringLiteral("vid")].toString(), QStringLiteral("100020"));
    const QByteArray image = QByteArray::fromBase64(body[QStringLiteral("image")].toString().toLatin1());
    QCOMPARE(QImage::fromData(image, "PNG").convertToFormat(QImage::Format_RGB32), photo);
}

void tst_DrugInfoWidget::leafletOpensOnlyForTheSelectedDrug_data()
{
    QTest::addColumn<bool>("selectAnother");
    QTest::newRow("leaflet comes in") << false;
    QTest::newRow("another drug selected while it comes in") << true;
}

void tst_DrugInfoWidget::leafletOpensOnlyForTheSelectedDrug()
{
    QFETCH(bool, selectAnother);
    auto* print = part<QPushButton>("printButton");
    auto* label = part<QLabel>("leafletLabel");
    if (selectAnother)
        QVERIFY(simulator.setFault(QStringLiteral("/leaflets/*"), QStringLiteral("slow")));
    select(QStringLiteral("100001"));
    QTest::mouseClick(print, Qt::LeftButton);
    QVERIFY(!print->isEnabled() && !label->isHidden());
    if (selectAnother) {
        select(QStringLiteral("100002"));
        // The slow answer ends after three seconds; nothing may open for the old drug.
        QTest::qWait(4500);
    }
    QTRY_COMPARE_WITH_TIMEOUT(viewers().size(), selectAnother ? 0 : 1, 15000);
    QVERIFY(print->isEnabled() && label->isHidden());
}

void tst_DrugInfoWidget::fullChplAndSubstitutes()
{
    select(QStringLiteral("100041"));
    QTest::mouseClick(part<QPushButton>("showFullChPLButton"), Qt::LeftButton);
    QCOMPARE(openedUrls.size(), 1);
    QCOMPARE(openedUrls.first().fragment(QUrl::FullyDecoded),
             QStringLiteral("search=Miętówka Żołądkowa Demo=status!!warn!!level!"));

    select(QStringLiteral("100001"));
    auto* tabs = window->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
    QTest::mouseClick(part<QPushButton>("pushButton_2"), Qt::LeftButton);
    QVERIFY(tabs->tabText(tabs->currentIndex()).startsWith(QStringLiteral("Zamienniki")));
}

QTEST_MAIN(tst_DrugInfoWidget)
#include "tst_druginfowidget.moc"
