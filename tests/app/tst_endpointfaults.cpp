#include "appdir.h"
#include "buildconfig.h"
#include "db/drugdatabase.h"
#include "drugs/druginfowidget.h"
#include "drugs/drugviewmodel.h"
#include "guithreadwatchdog.h"
#include "settings/pharmacyselector.h"
#include "settings/usersettingsform.h"
#include "settingskeys.h"
#include "simulator.h"
#include "testsupport.h"
#include "update/databaseupdater.h"
#include "update/programupdater.h"
#include "urls.h"
#include "utils/connectionprobe.h"
#include "utils/networklimits.h"
#include "utils/pdfdownloader.h"
#include "utils/qthttpget.h"
#include "utils/raven.h"
#include "utils/statisticssender.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

// Every endpoint of the program under every fault of the simulator: each flow
// ends on its own path within the time-out, the GUI thread never waits, and
// the drug base and the statistics queue stay as they were. The outcome of
// each pair goes to the log as a table row.
class tst_EndpointFaults : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void flowEndsOnItsFailurePath_data();
    void flowEndsOnItsFailurePath();

private:
    int storedRecords();

    QTemporaryDir dir;
    Simulator simulator;
    QByteArray oldBase;
};

namespace {

#ifdef QUILLARD_SANITIZED_BUILD
// Sanitized code builds a page's form several times slower, in the flow's first turn.
constexpr int longestGapMs = 1000;
#else
constexpr int longestGapMs = 250;
#endif

// A flow started against the simulator; `outcome` is empty while it runs.
struct Flow {
    std::vector<std::shared_ptr<QObject>> parts;
    QString outcome;
};

using Starter = std::function<void(Flow&)>;

void startProbe(Flow& flow)
{
    auto probe = std::make_shared<ConnectionProbe>(websiteUrl);
    QObject::connect(probe.get(), &ConnectionProbe::answered, probe.get(),
                     [&flow](bool online) { flow.outcome = online ? QStringLiteral("online") : QStringLiteral("offline"); });
    probe->start();
    flow.parts.push_back(probe);
}

void startVersionCheck(Flow& flow)
{
    auto updater = std::make_shared<ProgramUpdater>();
    QObject::connect(updater.get(), &ProgramUpdater::actVersion, updater.get(), [&flow] { flow.outcome = "current"; });
    QObject::connect(updater.get(), &ProgramUpdater::oldVersion, updater.get(), [&flow] { flow.outcome = "newer offered"; });
    QObject::connect(updater.get(), &ProgramUpdater::error, updater.get(), [&flow] { flow.outcome = "error"; });
    updater->checkVersion();
    flow.parts.push_back(updater);
}

void startInstallerDownload(Flow& flow)
{
    auto updater = std::make_shared<ProgramUpdater>();
    QObject::connect(updater.get(), &ProgramUpdater::error, updater.get(), [&flow] { flow.outcome = "error"; });
    // A good installer is written beside the program, started, and the program
    // asked to quit; here its file is the end of the flow.
    auto written = std::make_shared<QTimer>();
    QObject::connect(written.get(), &QTimer::timeout, written.get(), [&flow] {
        if (flow.outcome.isEmpty() && !QDir(programDir()).entryList({ QStringLiteral("quillard-setup*") }).isEmpty())
            flow.outcome = QStringLiteral("installer written and started");
    });
    written->start(20);
    updater->downloadUpdate();
    flow.parts.push_back(updater);
    flow.parts.push_back(written);
}

void startDatabaseCheck(Flow& flow)
{
    auto updater = std::make_shared<DatabaseUpdater>();
    updater->setLocalVersion(DrugDatabase::dataVersion());
    QObject::connect(updater.get(), &DatabaseUpdater::checked, updater.get(), [&flow, u = updater.get()] {
        flow.outcome = u->isNewVersionAvailable() ? QStringLiteral("newer base") : QStringLiteral("base current");
    });
    QObject::connect(updater.get(), &DatabaseUpdater::error, updater.get(), [&flow] { flow.outcome = "error"; });
    updater->check();
    flow.parts.push_back(updater);
}

void startDatabaseDownload(Flow& flow)
{
    auto updater = std::make_shared<DatabaseUpdater>();
    updater->setLocalVersion(DrugDatabase::dataVersion());
    DatabaseUpdater* raw = updater.get();
    QObject::connect(raw, &DatabaseUpdater::downloaded, raw, [raw] {
        DrugDatabase::closeDatabase();
        raw->replaceDatabase(QDir(programDir()).filePath(DrugDatabase::drugDatabaseName));
    });
    QObject::connect(raw, &DatabaseUpdater::replaced, raw, [&flow] { flow.outcome = "replaced"; });
    QObject::connect(raw, &DatabaseUpdater::error, raw, [&flow] { flow.outcome = "error"; });
    updater->download();
    flow.parts.push_back(updater);
}

Starter documentDownload(const QString& url)
{
    return [url](Flow& flow) {
        auto downloader = std::make_shared<PDFDownloader>();
        QObject::connect(downloader.get(), &PDFDownloader::fileReady, downloader.get(), [&flow] { flow.outcome = "shown"; });
        QObject::connect(downloader.get(), &PDFDownloader::error, downloader.get(), [&flow] {
            if (flow.outcome.isEmpty())
                flow.outcome = QStringLiteral("error");
        });
        downloader->download(url, QStringLiteral("faulty"), QStringLiteral(".pdf"));
        flow.parts.push_back(downloader);
    };
}

// A window that may delete itself once closed, owned until then.
template <typename Window> std::shared_ptr<Window> closable(Window* window)
{
    return std::shared_ptr<Window>(window, [guard = QPointer<Window>(window)](Window*) { delete guard.data(); });
}

// A window's request followed by name: `outcome` tells what the window shows
// once it has handled the answer.
void followRequest(Flow& flow, QObject* window, const char* name, const std::function<QString()>& outcome)
{
    auto* request = window->findChild<QtHttpGet*>(QLatin1String(name));
    QVERIFY(request);
    // Connected after the window's own slot, so it runs once the window has seen the answer.
    QObject::connect(request, &QtHttpGet::result, window, [&flow, outcome] { flow.outcome = outcome(); });
}

QString messageShown()
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return QStringLiteral("nothing shown");
    box->close();
    return QStringLiteral("message shown");
}

// The page of a drug whose picture is not in the cache.
std::shared_ptr<DrugInfoWidget> drugPage()
{
    auto page = std::make_shared<DrugInfoWidget>();
    QDir(AppDir::cacheDir()).removeRecursively();
    DrugViewModel::instance()->addDrug(DrugDatabase::drugByVid(QStringLiteral("100020")));
    return page;
}

void startPictureDownload(Flow& flow)
{
    auto page = drugPage();
    auto* picture = page->findChild<QLabel*>(QStringLiteral("DrugImage"));
    auto* upload = page->findChild<QPushButton*>(QStringLiteral("pushButton"));
    followRequest(flow, page.get(), "imageGetter", [picture, upload] {
        if (picture->pixmap(Qt::ReturnByValue).isNull())
            return QStringLiteral("no picture");
        return upload->isHidden() ? QStringLiteral("picture") : QStringLiteral("placeholder");
    });
    flow.parts.push_back(page);
}

void startPictureUpload(Flow& flow)
{
    auto page = drugPage();
    const QString file = QDir(programDir()).filePath(QStringLiteral("photo.png"));
    QImage(40, 30, QImage::Format_RGB32).save(file);
    followRequest(flow, page.get(), "imageSender", messageShown);
    page->sendImage(file);
    flow.parts.push_back(page);
}

void startProfileSave(Flow& flow)
{
    QSettings settings;
    settings.setValue(SettingsKeys::userInfoJson, QStringLiteral(R"({"name":"Anna","surname":"Nowak","login":"anowak"})"));
    settings.setValue(SettingsKeys::pharmacyInfoJson,
                      QStringLiteral(R"({"name":"Apteka","street":"Długa 1","city":"Kórnik","zip":"62-035"})"));
    auto form = closable(new UserSettingsForm);
    // Filled in from the settings; stored again only once the user is taken.
    settings.remove(SettingsKeys::pharmacyInfoJson);
    const auto outcome = [form = form.get()]() -> QString {
        const QString shown = messageShown();
        return form->isVisible() ? shown + QStringLiteral(", form open") : shown + QStringLiteral(", form closed");
    };
    followRequest(flow, form.get(), "userGet", [outcome] {
        // A user taken goes on to the pharmacy, stored as it is sent.
        return QSettings().contains(SettingsKeys::pharmacyInfoJson) ? QString() : outcome();
    });
    followRequest(flow, form.get(), "pharmacyGet", outcome);
    form->show();
    form->findChild<QPushButton*>(QStringLiteral("hoursButton"))->click();
    form->findChild<QPushButton*>(QStringLiteral("FinnishButton"))->click();
    flow.parts.push_back(form);
}

void startPharmacyRequest(Flow& flow)
{
    auto selector = closable(new PharmacySelector);
    followRequest(flow, selector.get(), "pharmacyGet", [selector = selector.get()]() -> QString {
        const QString shown = messageShown();
        return selector->isVisible() ? shown + QStringLiteral(", window open") : shown + QStringLiteral(", window closed");
    });
    selector->show();
    selector->findChild<QCheckBox*>(QStringLiteral("checkBox"))->setChecked(true);
    for (const char* name : { "NameLineEdit", "StreetLineEdit", "ZipLineEdit", "CityLineEdit" })
        selector->findChild<QLineEdit*>(QLatin1String(name))->setText(QStringLiteral("11111"));
    selector->findChild<QPushButton*>(QStringLiteral("SubmitButton"))->click();
    flow.parts.push_back(selector);
}

void startErrorReport(Flow& flow)
{
    auto* manager = Raven::instance()->findChild<QNetworkAccessManager*>();
    QVERIFY(manager);
    // The failures of the rows before report to the same client: their events
    // go first, so that the next answer is this one's.
    Raven::instance()->waitForIdle();
    auto context = std::make_shared<QObject>();
    QObject::connect(manager, &QNetworkAccessManager::finished, context.get(), [&flow](QNetworkReply* reply) {
        // Redirects are not followed: only a 200 takes the event.
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        flow.outcome = reply->error() == QNetworkReply::NoError && status == 200
                           ? QStringLiteral("delivered")
                           : QStringLiteral("dropped, one log line");
    });
    Raven::capture(3, QStringLiteral("tst_endpointfaults"), QStringLiteral("fault"), QJsonObject(), QJsonObject());
    flow.parts.push_back(context);
}

Starter usageRecord(const std::function<void()>& send)
{
    return [send](Flow&) { send(); };
}

} // namespace

Q_DECLARE_METATYPE(Starter)

void tst_EndpointFaults::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(dir.isValid());
    QVERIFY(simulator.start(QUILLARD_SIMULATOR_PORT));
    QVERIFY(TestSupport::useDemoDatabase(dir.path()));
    DrugDatabase::createStatisticsTable();
    QFile base(dir.filePath(DrugDatabase::drugDatabaseName));
    QVERIFY(base.open(QIODevice::ReadOnly));
    oldBase = base.readAll();
    QVERIFY(Raven::instance()->init(sentryDsn));
    qInfo("| endpoint | fault | outcome | ms |");
}

void tst_EndpointFaults::init()
{
    QVERIFY(simulator.reset());
    // The refund list is never newer, so that the version check is asked too.
    QVERIFY(simulator.setValue(QStringLiteral("refund_answer"), QStringLiteral("1#2000-01-01")));
    NetworkLimits::setTransferTimeout(1000);
}

void tst_EndpointFaults::cleanup()
{
    NetworkLimits::setTransferTimeout(30000);
    DrugViewModel::instance()->clearDrugs();
}

int tst_EndpointFaults::storedRecords()
{
    QSqlQuery query(QStringLiteral("SELECT count(*) FROM json"), DrugDatabase::databaseHandle(DrugDatabase::statisticsDatabaseName));
    return query.next() ? query.value(0).toInt() : -1;
}

void tst_EndpointFaults::flowEndsOnItsFailurePath_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<Starter>("start");

    const QString document = QStringLiteral("ulotki/faulty.pdf");
    const QList<std::tuple<const char*, QString, Starter>> endpoints = {
        { "probe", QStringLiteral("/"), startProbe },
        { "version", QStringLiteral("/desktop/app_version.php?a=version"), startVersionCheck },
        { "list", QStringLiteral("/desktop/app_version.php?a=list"), startInstallerDownload },
        { "installer", QStringLiteral("/desktop/app_version.php?a=file"), startInstallerDownload },
        { "refund check", QStringLiteral("/files/check.php?a=info_refund"), startDatabaseCheck },
        { "version check", QStringLiteral("/files/check.php?a=info"), startDatabaseCheck },
        { "base download", QStringLiteral("/files/check.php?a=get"), startDatabaseDownload },
        { "leaflet", QStringLiteral("/leaflets/*"), documentDownload(leafletServiceUrl + document) },
        { "ChPL attachment", QStringLiteral("/mobile/pdf/index.php"),
          documentDownload(attachmentsUrl + QStringLiteral("/mobile/pdf/index.php?f=chpl.pdf")) },
        { "GIF decision", QStringLiteral("/images/*"), documentDownload(imagesUrl + QStringLiteral("decyzje/faulty.pdf")) },
        { "picture", QStringLiteral("/files/check.php?a=getImage"), startPictureDownload },
        { "picture upload", QStringLiteral("/desktop/new_drug_image.php"), startPictureUpload },
        { "user POST", QStringLiteral("/desktop/registration/update_user_additional.php"), startProfileSave },
        { "pharmacy POST", QStringLiteral("/desktop/registration/update_user_pharmacy.php"), startProfileSave },
        { "pharmacy request POST", QStringLiteral("/desktop/registration/user_pharmacy.php"), startPharmacyRequest },
        { "Sentry store", QStringLiteral("/api/16/store/"), startErrorReport },
        { "usage search", QStringLiteral("/desktop/usage/search.php"), usageRecord([] {
              StatisticsSender::sendSearch(QStringLiteral("fault"), QStringLiteral(" "), QStringLiteral("drug_list"));
          }) },
        { "usage scan", QStringLiteral("/desktop/usage/scanned_ean.php"),
          usageRecord([] { StatisticsSender::sendScan(QStringLiteral("5909990000012"), QStringLiteral("100001")); }) },
        { "usage click", QStringLiteral("/desktop/usage/click.php"), usageRecord([] {
              StatisticsSender::sendClick(QStringLiteral("100001"), QStringLiteral(" "), QStringLiteral("drug_list"));
          }) },
        { "usage recipe group", QStringLiteral("/desktop/usage/recipe_group.php"),
          usageRecord([] { StatisticsSender::sendRecipeGroup(3); }) },
        { "usage recipe drug", QStringLiteral("/desktop/usage/recipe_drug.php"),
          usageRecord([] { StatisticsSender::sendRecipeDrug(7); }) },
        { "usage substitute view", QStringLiteral("/desktop/usage/substitute_view.php"),
          usageRecord([] { StatisticsSender::sendSubstituteView(QStringLiteral("drug_info"), QStringLiteral("100001")); }) },
        { "usage substitute click", QStringLiteral("/desktop/usage/substitute_click.php"), usageRecord([] {
              StatisticsSender::sendSubstituteClick(QStringLiteral("100002"), QStringLiteral("100001"));
          }) },
    };
    const QStringList faults = { "404", "500", "301", "302", "302loop", "slow", "truncated", "noanswer", "badjson",
                                 "oversized" };
    for (const auto& endpoint : endpoints) {
        for (const QString& fault : faults)
            QTest::addRow("%s %s", std::get<0>(endpoint), qPrintable(fault))
                << std::get<1>(endpoint) << fault << std::get<2>(endpoint);
    }
}

void tst_EndpointFaults::flowEndsOnItsFailurePath()
{
    QFETCH(QString, key);
    QFETCH(QString, fault);
    QFETCH(Starter, start);
    // Whatever body a 200 of this computer gives the installer is started, and the program quits.
    if (key.endsWith(QLatin1String("a=file")) && (fault == QLatin1String("302") || fault == QLatin1String("badjson")))
        QSKIP("a 200 from this computer, a trusted source, is started as the installer and the program quits");
    // "slow" here is a server slower than the time-out between two pieces of its body.
    QVERIFY(simulator.setFault(key, fault, QStringLiteral("/_sim/echo"), fault == QLatin1String("slow") ? 600 : 0));
    const bool usage = key.startsWith(QLatin1String("/desktop/usage/"));
    const int storedBefore = storedRecords();

    GuiThreadWatchdog watchdog;
    QElapsedTimer elapsed;
    elapsed.start();
    Flow flow;
    start(flow);
    if (usage) {
        // The record that was not taken waits in the queue again.
        QTRY_VERIFY_WITH_TIMEOUT(storedRecords() + StatisticsSender::instance()->recordsInMemory() > storedBefore, 10000);
        flow.outcome = QStringLiteral("queued");
    } else {
        QTRY_VERIFY_WITH_TIMEOUT(!flow.outcome.isEmpty(), 10000);
    }
    const qint64 ms = elapsed.elapsed();
    QVERIFY2(watchdog.longestGapMs() <= longestGapMs, qPrintable(QString::number(watchdog.longestGapMs())));
    QVERIFY(!simulator.records(key).isEmpty());
    qInfo("| %s | %s | %s | %lld |", QTest::currentDataTag(), qPrintable(fault), qPrintable(flow.outcome), ms);
    flow.parts.clear();

    QFile base(QDir(dir.path()).filePath(DrugDatabase::drugDatabaseName));
    QVERIFY(base.open(QIODevice::ReadOnly));
    QVERIFY(base.readAll() == oldBase);
    if (usage) {
        QCOMPARE(storedRecords(), storedBefore + 1);
        DrugDatabase::takeOverdueRecord();
    }
    QCOMPARE(storedRecords(), storedBefore);
    for (const QString& installer : QDir(dir.path()).entryList({ QStringLiteral("quillard-setup*") }))
        QFile::remove(dir.filePath(installer));
}

QTEST_MAIN(tst_EndpointFaults)
#include "tst_endpointfaults.moc"
