#include "db/drugdatabase.h"
#include "drugs/druginfowidget.h"
#include "drugs/drugviewmodel.h"
#include "mainwindow.h"
#include "messageboxanswerer.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/imageviewer.h"
#include "utils/networklimits.h"

#include <QApplication>
#include <QDesktopServices>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QPushButton>
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
    void initTestCase()
    {
        QVERIFY(window = TestSupport::demoWindow(dir.path(), simulator));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        info = window->findChild<DrugInfoWidget*>();
        QDesktopServices::setUrlHandler(QStringLiteral("http"), this, "openUrl");
    }

    void cleanup()
    {
        qDeleteAll(viewers());
        DrugViewModel::instance()->clearDrugs();
        NetworkLimits::setTransferTimeout(30000);
        QVERIFY(simulator.reset());
        QVERIFY(QDir(dir.filePath(QStringLiteral("cache"))).removeRecursively());
    }

    void redrawFollowsTheDrug_data()
    {
        QTest::addColumn<QStringList>("vids"); // selected in turn
        QTest::addColumn<QString>("indications");
        QTest::addColumn<bool>("leaflet");
        QTest::addColumn<bool>("substitutes");
        QTest::addColumn<QString>("fullPrice");
        QTest::addColumn<QStringList>("refunds");
        QTest::newRow("leaflet, substitutes, full price and ryczałt") << QStringList { "100001" }
            << DrugDatabase::indicationsById(QStringLiteral("1")) << true << true << "9,99 zł" << QStringList { "ryczałt" };
        QTest::newRow("iid -1, no leaflet, no substitutes")
            << QStringList { "100070" } << "Brak wskazań wg ChPL" << false << false << "12,30 zł" << QStringList();
        QTest::newRow("no 100% row keeps the previous full price")
            << QStringList { "100001", "100080" } << DrugDatabase::indicationsById(QStringLiteral("13")) << true << true
            << "9,99 zł" << QStringList { "ryczałt", "50%" };
    }

    void redrawFollowsTheDrug()
    {
        QFETCH(QStringList, vids);
        for (const QString& vid : vids)
            select(vid);
        QCOMPARE(text(info, "Name"), DrugDatabase::drugByVid(vids.last()).name);
        QTEST(text(info, "label_7"), "indications");
        QTEST(!part<QPushButton>("printButton")->isHidden(), "leaflet");
        QTEST(!part<QPushButton>("pushButton_2")->isHidden(), "substitutes");
        QTEST(text(part<QWidget>("fullPriceItem"), "value"), "fullPrice");
        QStringList levels;
        QLayout* layout = part<QWidget>("refundPriceList")->layout();
        for (int i = 0; i < layout->count(); ++i)
            levels << text(layout->itemAt(i)->widget(), "xsName");
        QTEST(levels, "refunds");
    }

    void pictureCachedByGroupOrPlaceholder_data()
    {
        QTest::addColumn<QString>("imageSource");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QStringList>("vids"); // two drugs of one group
        QTest::addColumn<QStringList>("cached");
        const QStringList group1 { "100001", "100002" };
        QTest::newRow("picture") << "picture" << "none" << group1 << QStringList { "1.png" };
        QTest::newRow("empty array") << "picture" << "none" << QStringList { "100020", "100021" } << QStringList();
        QTest::newRow("bytes that are no picture") << "notimage" << "none" << group1 << QStringList();
        QTest::newRow("service that never answers") << "picture" << "noanswer" << group1 << QStringList();
    }

    // Without a picture the placeholder and the upload button show, nothing is
    // cached, and the group's next drug asks the service again.
    void pictureCachedByGroupOrPlaceholder()
    {
        QFETCH(QString, imageSource);
        QFETCH(QString, fault);
        QFETCH(QStringList, vids);
        QFETCH(QStringList, cached);
        NetworkLimits::setTransferTimeout(500);
        QVERIFY(simulator.setValue(QStringLiteral("image_src"), imageSource));
        QVERIFY(simulator.setFault(imageKey, fault));
        select(vids.at(0));
        QCOMPARE(part<QPushButton>("pushButton")->isHidden(), !cached.isEmpty());
        QCOMPARE(QDir(dir.filePath(QStringLiteral("cache"))).entryList(QDir::Files), cached);
        // A silent service under load can see a request sent again on a new
        // connection, and other drugs' requests may come in late; what counts
        // is whether the group's next drug asks for the group's picture again.
        const QString groupKey = imageKey + QStringLiteral("&id=") + DrugDatabase::drugByVid(vids.at(1)).gid;
        const int before = simulator.records(groupKey).size();
        QVERIFY(before >= 1); // the first drug asked
        select(vids.at(1));
        QTest::qWait(300);
        const int requests = simulator.records(groupKey).size();
        if (cached.isEmpty())
            QVERIFY2(requests > before, qPrintable(QString::number(requests)));
        else
            QCOMPARE(requests, before);
    }

    void uploadSendsPictureAndShowsRefusal()
    {
        QVERIFY(simulator.setFault(uploadPath, QStringLiteral("reject")));
        const QString file = dir.filePath(QStringLiteral("photo.png"));
        QVERIFY(QImage(40, 30, QImage::Format_RGB32).save(file));
        select(QStringLiteral("100020"));

        MessageBoxAnswerer answerer(QStringLiteral("OK"));
        info->sendImage(file);
        QTRY_COMPARE(answerer.texts, QStringList { "Serwer odrzucił dane (symulator)" });

        const QJsonObject body = QJsonDocument::fromJson(
            simulator.records(uploadPath).first()[QStringLiteral("body")].toString().toUtf8()).object();
        QCOMPARE(body.keys(), (QStringList { "app_key", "image", "send_date", "vid" }));
        QCOMPARE(body[QStringLiteral("vid")].toString(), QStringLiteral("100020"));
    }

    void leafletAndFullChplOpenForTheSelectedDrug()
    {
        auto* print = part<QPushButton>("printButton");
        auto* label = part<QLabel>("leafletLabel");
        QVERIFY(simulator.setFault(QStringLiteral("/leaflets/*"), QStringLiteral("slow")));
        select(QStringLiteral("100001"));
        QTest::mouseClick(print, Qt::LeftButton);
        QVERIFY(!print->isEnabled() && !label->isHidden());
        select(QStringLiteral("100002"));
        // The slow answer ends after three seconds; nothing may open for the old drug.
        QTest::qWait(4500);
        QCOMPARE(viewers().size(), 0);
        QVERIFY(print->isEnabled() && label->isHidden());

        QTest::mouseClick(print, Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(viewers().size(), 1, 15000);

        // The full description opens the web search for this drug.
        select(QStringLiteral("100041"));
        QTest::mouseClick(part<QPushButton>("showFullChPLButton"), Qt::LeftButton);
        QCOMPARE(openedUrls.size(), 1);
        QCOMPARE(openedUrls.first().fragment(QUrl::FullyDecoded),
                 QStringLiteral("search=Miętówka Żołądkowa Demo=status!!warn!!level!"));
    }

    void failedLeafletGivesTheButtonBack_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("no such leaflet") << "404";
        QTest::newRow("answer cut off") << "truncated";
    }

    // Regression: a failed leaflet left "Drukuj ulotkę" disabled and its label
    // showing until another drug was selected.
    void failedLeafletGivesTheButtonBack()
    {
        QFETCH(QString, fault);
        auto* print = part<QPushButton>("printButton");
        auto* label = part<QLabel>("leafletLabel");
        QVERIFY(simulator.setFault(QStringLiteral("/leaflets/*"), fault));
        select(QStringLiteral("100001"));
        QTest::mouseClick(print, Qt::LeftButton);
        QVERIFY(!print->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(print->isEnabled() && label->isHidden(), 15000);
        QCOMPARE(viewers().size(), 0);
    }

    // Regression: a closed leaflet viewer kept its full-size pages to the end of the run.
    void closedLeafletViewerIsFreed()
    {
        select(QStringLiteral("100002"));
        QTest::mouseClick(part<QPushButton>("printButton"), Qt::LeftButton);
        QTRY_COMPARE_WITH_TIMEOUT(viewers().size(), 1, 15000);
        QPointer<ImageViewer> viewer = viewers().first();
        viewer->close();
        QTRY_VERIFY(viewer.isNull());
    }

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

QTEST_MAIN(tst_DrugInfoWidget)
#include "tst_druginfowidget.moc"
