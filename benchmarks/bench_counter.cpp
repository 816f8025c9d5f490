// What a pharmacist feels at the counter, measured in-process on the real main
// window (run it on X: xcb under Xvfb), each figure beside its limit measured in
// the same run, in an interleaved order so that noise hits both alike:
//
//   keystroke  debounce timeout -> pop-up painted, event loop idle; limit: the
//              same statement on bare SQLite. Also the database layer alone.
//   scan       newReading -> page redrawn (the tabs behind the information tab
//              fill a frame later, or when opened); limit: the
//              statements the scan ran, replayed on bare SQLite, and one
//              repaint of the whole unchanged window
//   start      process start -> main window mapped, and private memory after
//              start and after 10,000 searches and scans (--uses), with the
//              threads, widgets and network managers alive; limit: a minimal window
//   update     unpack and replace of a ~100 MB base; limit: unzip -p into a file
//
//   bench_counter [--base file] [--base10 file] [--rounds n] [--json file]
//
// Prints a table and writes a JSON file (bench_counter.json by default).

#include "appdir.h"
#include "applicationsetup.h"
#include "db/drugdatabase.h"
#include "drugs/drugviewmodel.h"
#include "drugs/searchlookup.h"
#include "mainwindow.h"
#include "rawscan.h"
#include "rawsearch.h"
#include "samples.h"
#include "simulator.h"
#include "update/unzip.h"
#include "utils/keyboardreader.h"
#include "utils/statisticssender.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <map>

namespace {

struct TokenKind {
    QString name;
    QStringList texts;
};

// What a pharmacist types, by kind; words are split at every blank as the search line does.
const QList<TokenKind> tokenKinds = {
    {QStringLiteral("prefix"), {QStringLiteral("a"), QStringLiteral("pa"), QStringLiteral("ato"), QStringLiteral("kand")}},
    {QStringLiteral("word"),
     {QStringLiteral("Atorwastatyna"), QStringLiteral("Propranolol"), QStringLiteral("Paracetamol"),
      QStringLiteral("Olerex")}},
    {QStringLiteral("two words"),
     {QStringLiteral("atorwastatyna polvita"), QStringLiteral("kandesartan mazovia"),
      QStringLiteral("paracetamol demofarm")}},
    {QStringLiteral("nothing"), {QStringLiteral("zzqx"), QStringLiteral("atorwastatynq"), QStringLiteral("xyzw")}},
    {QStringLiteral("digits"),
     {QStringLiteral("5909990000"), QStringLiteral("59099900001"), QStringLiteral("590999000030")}},
};

// Scanned codes whose pages fill every tab: 18 description sections, warnings,
// GIF decisions, substitutes and refund rows (tools/demodb/README.md).
const QStringList scannedCodes = {QStringLiteral("5909990000012"), QStringLiteral("5909990000104"),
                                  QStringLiteral("5909990000906"), QStringLiteral("5909990000302")};

constexpr int searchLimit = 20;

void dropDebugLines(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        QTextStream(stderr) << message << '\n';
}

// A number of /proc/self/status: kilobytes for the memory fields.
qint64 statusField(const char* field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// Anonymous resident memory, after giving freed heap back to the system.
qint64 privateKilobytes(const char* field = "RssAnon:")
{
    malloc_trim(0);
    return statusField(field);
}

// The least time between two packages scanned in the scan figure.
constexpr int scanGapMs = 200;

double millisecondsSince(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

// Runs the event loop until `done` holds when it is about to wait for more:
// the work is drawn and nothing is left to do. The time of that moment.
double runUntilIdle(const QElapsedTimer& timer, const std::function<bool()>& done, int timeoutMs = 5000)
{
    QEventLoop loop;
    double end = -1;
    const QMetaObject::Connection idle = QObject::connect(
        QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop, [&] {
            if (end < 0 && done()) {
                end = millisecondsSince(timer);
                loop.quit();
            }
        });
    QTimer::singleShot(timeoutMs, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(idle);
    return end;
}

void settle(int milliseconds = 0)
{
    QElapsedTimer timer;
    timer.start();
    runUntilIdle(timer, [&] { return timer.elapsed() >= milliseconds; }, milliseconds + 5000);
}

// Notes paint events: of one widget, or of any widget of one window.
class PaintWatcher : public QObject {
public:
    explicit PaintWatcher(const QWidget* window)
        : window(window)
    {
    }
    bool painted = false;
    bool armed = true;

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (armed && event->type() == QEvent::Paint && object->isWidgetType()
            && static_cast<QWidget*>(object)->window() == window)
            painted = true;
        return false;
    }

private:
    const QWidget* window;
};

// ---- child processes -------------------------------------------------------

// Starts the main window (or a minimal one) and reports when it is mapped,
// then its private memory once it has settled.
int startProbe(int argc, char* argv[])
{
    const bool minimal = qstrcmp(argv[2], "minimal") == 0;
    // The program's own settings; the minimal window keeps Qt's.
    if (!minimal)
        ApplicationSetup::beforeApplication();
    QApplication app(argc, argv);
    qInstallMessageHandler(dropDebugLines);
    QStandardPaths::setTestModeEnabled(true);
    QWidget* window = nullptr;
    if (minimal) {
        auto* mainWindow = new QMainWindow;
        mainWindow->setCentralWidget(new QLabel(QStringLiteral("Quillard")));
        mainWindow->resize(1280, 800);
        mainWindow->show();
        window = mainWindow;
    } else {
        setProgramDir(QString::fromLocal8Bit(argv[3]));
        auto* mainWindow = new MainWindow(nullptr);
        mainWindow->display();
        window = mainWindow;
    }
    QElapsedTimer timer;
    timer.start();
    runUntilIdle(timer, [window] { return window->windowHandle() && window->windowHandle()->isExposed(); });
    QTextStream out(stdout);
    out << "mapped" << Qt::endl;
    settle(1000);
    out << "private " << privateKilobytes() << Qt::endl;
    std::_Exit(0);
}

// Unpacks `archive` and renames the result over `target`, as an update does.
int unzipProbe(char* argv[])
{
    const QString archive = QString::fromLocal8Bit(argv[2]);
    const QString target = QString::fromLocal8Bit(argv[3]);
    const QString unpacked = target + QStringLiteral(".new");
    const qint64 before = privateKilobytes("VmRSS:");
    QElapsedTimer timer;
    timer.start();
    const bool ok = unzipDatabase(archive, unpacked) && QFile::remove(target) && QFile::rename(unpacked, target);
    const double elapsed = millisecondsSince(timer);
    QTextStream(stdout) << (ok ? "ok " : "failed ") << elapsed << ' ' << privateKilobytes("VmHWM:") - before
                        << Qt::endl;
    return ok ? 0 : 1;
}

// ---- the driver --------------------------------------------------------------

struct Row {
    QString figure;
    Samples measured;
    Samples limit;
    QString limitName;
    QString goal;
};

class Bench {
public:
    Bench(const QString& base, const QString& base10, int rounds)
        : base(base)
        , base10(base10)
        , rounds(rounds)
    {
    }

    bool setUp();
    void keystrokes(const QString& label);
    void scans(int count, Samples* samples);
    void scanFigure();
    void memory();
    void scale();
    void start();
    void update();
    void report(const QString& jsonPath);
    int uses = 10000;

private:
    struct Alive {
        int widgets = 0;
        int topLevel = 0;
        int threads = 0;
        int networkManagers = 0;
        int recordsWaiting = 0;
    };
    static Alive alive();
    double keystroke(const QString& text);
    double scan(const QString& code);
    bool useBase(const QString& file);

    QString base;
    QString base10;
    int rounds;
    QTemporaryDir folder;
    Simulator simulator;
    std::unique_ptr<MainWindow> window;
    QLineEdit* searchLine = nullptr;
    SearchLookup* lookup = nullptr;
    QListWidget* popup = nullptr;
    std::unique_ptr<PaintWatcher> popupPaints;
    std::unique_ptr<PaintWatcher> windowPaints;
    QObject marker;
    bool filled = false;
    QList<Row> rows;
    QJsonObject memoryFigures;
    QRandomGenerator random{2024};
};

bool Bench::useBase(const QString& file)
{
    DrugDatabase::closeDatabase();
    const QString target = folder.filePath(DrugDatabase::drugDatabaseName);
    QFile::remove(target);
    if (!QFile::copy(file, target)) {
        QTextStream(stderr) << "bench_counter: cannot copy " << file << '\n';
        return false;
    }
    return DrugDatabase::waitForSearchIndex();
}

bool Bench::setUp()
{
    setProgramDir(folder.path());
    if (!useBase(base))
        return false;
    // The package pictures of the scanned drugs wait in the cache, as after a first scan.
    QDir(folder.path()).mkpath(QStringLiteral("cache"));
    for (const QString& code : scannedCodes) {
        QImage picture(400, 300, QImage::Format_RGB32);
        picture.fill(Qt::white);
        picture.save(folder.filePath(QStringLiteral("cache/") + DrugDatabase::drugByEan(code).gid
                                     + QStringLiteral(".png")));
    }
    if (!simulator.startOfferingCurrent(DrugDatabase::dataVersion()))
        return false;
    window = std::make_unique<MainWindow>(nullptr);
    window->display();
    if (!simulator.waitForStartupChecks())
        return false;

    searchLine = window->findChild<QLineEdit*>(QStringLiteral("searchLineEdit"));
    lookup = searchLine ? searchLine->findChild<SearchLookup*>() : nullptr;
    popup = window->findChild<QListWidget*>(QStringLiteral("searchPopup"));
    if (!lookup || !popup)
        return false;
    popupPaints = std::make_unique<PaintWatcher>(popup);
    qApp->installEventFilter(popupPaints.get());
    windowPaints = std::make_unique<PaintWatcher>(window.get());
    qApp->installEventFilter(windowPaints.get());
    // Queued after the page's own connections: it runs once the page has been refilled.
    QObject::connect(DrugViewModel::instance(), &DrugViewModel::selectedDrugChanged, &marker,
                     [this] { filled = true; }, Qt::QueuedConnection);
    settle(500);
    return true;
}

double Bench::keystroke(const QString& text)
{
    lookup->hidePopup();
    searchLine->setText(text);
    settle();
    popupPaints->painted = false;
    QElapsedTimer timer;
    timer.start();
    lookup->autoSuggest();
    // A search that finds nothing leaves the pop-up closed: done once idle.
    return runUntilIdle(timer, [this] {
        return popup->isHidden()
               || (popupPaints->painted && popup->windowHandle() && popup->windowHandle()->isExposed());
    });
}

void Bench::keystrokes(const QString& label)
{
    RawSearch raw(folder.filePath(DrugDatabase::drugDatabaseName));
    std::map<QString, std::array<Samples, 3>> byKind;
    // Every (kind, text, side) once per round, in a new random order each round.
    struct Run {
        QString kind;
        QString text;
        int side;
    };
    QList<Run> runs;
    for (const TokenKind& kind : tokenKinds) {
        for (const QString& text : kind.texts) {
            for (int side = 0; side < 3; ++side)
                runs.append({kind.name, text, side});
        }
    }
    for (int round = 0; round < rounds; ++round) {
        for (int i = runs.size() - 1; i > 0; --i)
            runs.swapItemsAt(i, random.bounded(i + 1));
        for (const Run& run : qAsConst(runs)) {
            const QStringList words = run.text.split(QLatin1Char(' '), Qt::KeepEmptyParts);
            QElapsedTimer timer;
            if (run.side == 0) {
                byKind[run.kind][0].add(keystroke(run.text));
            } else if (run.side == 1) {
                timer.start();
                DrugDatabase::searchDrugs(words, searchLimit);
                byKind[run.kind][1].add(millisecondsSince(timer));
            } else {
                timer.start();
                raw.run(words, searchLimit);
                byKind[run.kind][2].add(millisecondsSince(timer));
            }
        }
    }
    lookup->hidePopup();
    const bool market = label == QLatin1String("market");
    for (const TokenKind& kind : tokenKinds) {
        const auto& samples = byKind[kind.name];
        rows.append({QStringLiteral("keystroke %1 (%2)").arg(kind.name, label), samples[0], samples[2],
                     QStringLiteral("bare SQLite"),
                     QStringLiteral("<= 5 median, <= 10 p95")});
        rows.append({QStringLiteral("search in db layer %1 (%2)").arg(kind.name, label), samples[1], samples[2],
                     QStringLiteral("bare SQLite"), market ? QStringLiteral("<= 1") : QStringLiteral("<= 5")});
    }
}

double Bench::scan(const QString& code)
{
    filled = false;
    windowPaints->painted = false;
    QElapsedTimer timer;
    timer.start();
    emit KeyboardReader::instance()->newReading(code);
    return runUntilIdle(timer, [this] {
        if (filled && !windowPaints->armed) {
            windowPaints->armed = true;
            windowPaints->painted = false;
        }
        return filled && windowPaints->painted;
    });
}

void Bench::scans(int count, Samples* samples)
{
    for (int i = 0; i < count; ++i) {
        // A customer's basket: the list is cleared after every few packages.
        if (i % 8 == 7)
            DrugViewModel::instance()->clearDrugs();
        settle();
        windowPaints->armed = false;
        const double elapsed = scan(scannedCodes.at(random.bounded(scannedCodes.size())));
        if (samples)
            samples->add(elapsed);
    }
    DrugViewModel::instance()->clearDrugs();
    settle(300);
}

void Bench::scanFigure()
{
    // What the scan of each code runs on the program's connection, recorded
    // from a second scan, when the caches meant to stay are filled.
    const QVariant handle = DrugDatabase::databaseHandle(DrugDatabase::drugDatabaseName).driver()->handle();
    if (qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return;
    sqlite3* connection = *static_cast<sqlite3* const*>(handle.data());
    std::map<QString, QStringList> statements;
    for (const QString& code : scannedCodes) {
        for (int pass = 0; pass < 2; ++pass) {
            settle();
            windowPaints->armed = false;
            RawScan::startRecording(connection);
            scan(code);
            // The tabs behind the information tab fill a frame later: theirs count too.
            settle(100);
            statements[code] = RawScan::stopRecording(connection);
        }
    }
    RawScan raw(folder.filePath(DrugDatabase::drugDatabaseName));
    Samples samples;
    Samples limit;
    Samples counts;
    for (int i = 0; i < rounds * 5; ++i) {
        // A customer's basket: the list is cleared after every few packages.
        if (i % 8 == 7)
            DrugViewModel::instance()->clearDrugs();
        const QString code = scannedCodes.at(random.bounded(scannedCodes.size()));
        const int first = random.bounded(2);
        for (int k = 0; k < 2; ++k) {
            // Packages come a second or so apart at the counter: what a scan
            // leaves for after its page is drawn (the tabs behind, the next
            // banner) is done before the next one, not inside its time.
            settle(scanGapMs);
            if ((first + k) % 2 == 0) {
                windowPaints->armed = false;
                samples.add(scan(code));
            } else {
                QElapsedTimer timer;
                timer.start();
                raw.replay(statements[code]);
                window->repaint();
                limit.add(millisecondsSince(timer));
                counts.add(statements[code].size());
            }
        }
    }
    DrugViewModel::instance()->clearDrugs();
    settle(300);
    rows.append({QStringLiteral("scan to page redrawn"), samples, limit,
                 QStringLiteral("bare SQLite + one repaint"),
                 QStringLiteral("<= 16 median, <= 33 p95, <= 3x limit")});
    rows.append({QStringLiteral("statements per scan (count)"), counts, Samples(), QString(), QString()});
}

void Bench::memory()
{
    settle(500);
    const qint64 afterStart = privateKilobytes();
    const int widgetsAfterStart = QApplication::allWidgets().size();
    // The uses come far faster than at a counter: 60 usage records a second,
    // where the simulator takes 40. After every burst of uses the records left
    // waiting are posted first, as a pause at the counter lets them: without
    // it, the figure measures a queue that no counter builds up.
    int mostWaiting = 0;
    qint64 longestPosting = 0;
    const auto searchesAndScans = [this, &mostWaiting, &longestPosting](int count) {
        constexpr int usesPerBurst = 500;
        int used = 0;
        for (int burst = 0; used < count; ++burst) {
            const int size = std::min(usesPerBurst, count - used);
            for (int i = used; i < used + size; ++i) {
                const TokenKind& kind = tokenKinds.at(i % tokenKinds.size());
                keystroke(kind.texts.at((i / tokenKinds.size()) % kind.texts.size()));
            }
            lookup->hidePopup();
            scans(size, nullptr);
            used += size;
            const StatisticsSender* sender = StatisticsSender::instance();
            mostWaiting = std::max(mostWaiting, sender->recordsWaiting());
            QElapsedTimer posting;
            posting.start();
            runUntilIdle(posting, [sender] { return sender->recordsWaiting() == 0; }, 600000);
            longestPosting = std::max(longestPosting, posting.elapsed());
        }
        settle(11000); // bubbles close themselves after ten seconds
    };
    // The first searches and scans fill caches that are meant to stay (fonts,
    // glyphs, SQLite's pages, one page of sections): growth counts from there.
    searchesAndScans(20);
    const qint64 warm = privateKilobytes();
    const Alive warmAlive = alive();
    searchesAndScans(uses);
    const qint64 after = privateKilobytes();
    const Alive afterAlive = alive();
    memoryFigures.insert(QStringLiteral("records_waiting_after_a_burst_most"), mostWaiting);
    memoryFigures.insert(QStringLiteral("records_posted_after_a_burst_ms_most"), double(longestPosting));
    memoryFigures.insert(QStringLiteral("records_waiting_after_uses"), afterAlive.recordsWaiting);
    memoryFigures.insert(QStringLiteral("uses"), uses);
    memoryFigures.insert(QStringLiteral("private_after_start_kb"), afterStart);
    memoryFigures.insert(QStringLiteral("private_after_20_kb"), warm);
    memoryFigures.insert(QStringLiteral("private_after_uses_kb"), after);
    // What outlives its page, bubble or record is the first suspect of growth.
    memoryFigures.insert(QStringLiteral("widgets_after_start"), widgetsAfterStart);
    memoryFigures.insert(QStringLiteral("widgets_after_20"), warmAlive.widgets);
    memoryFigures.insert(QStringLiteral("widgets_after_uses"), afterAlive.widgets);
    memoryFigures.insert(QStringLiteral("top_level_widgets_after_20"), warmAlive.topLevel);
    memoryFigures.insert(QStringLiteral("top_level_widgets_after_uses"), afterAlive.topLevel);
    memoryFigures.insert(QStringLiteral("threads_after_20"), warmAlive.threads);
    memoryFigures.insert(QStringLiteral("threads_after_uses"), afterAlive.threads);
    memoryFigures.insert(QStringLiteral("network_managers_after_20"), warmAlive.networkManagers);
    memoryFigures.insert(QStringLiteral("network_managers_after_uses"), afterAlive.networkManagers);
}

// Threads of the process; widgets, top-level widgets and the network managers
// that hang from the application or a window (the statistics workers' own
// live in their threads and are counted with them).
Bench::Alive Bench::alive()
{
    Alive counts;
    counts.widgets = QApplication::allWidgets().size();
    counts.topLevel = QApplication::topLevelWidgets().size();
    counts.threads = int(statusField("Threads:"));
    counts.networkManagers = qApp->findChildren<QNetworkAccessManager*>().size();
    counts.recordsWaiting = StatisticsSender::instance()->recordsWaiting();
    for (QWidget* widget : QApplication::topLevelWidgets())
        counts.networkManagers += widget->findChildren<QNetworkAccessManager*>().size();
    return counts;
}

void Bench::scale()
{
    if (base10.isEmpty() || !QFile::exists(base10))
        return;
    if (!useBase(base10))
        return;
    keystrokes(QStringLiteral("market10"));
    useBase(base);
}

void Bench::start()
{
    std::array<Samples, 2> mapped;
    std::array<Samples, 2> memory;
    for (int round = 0; round < std::max(5, rounds / 2); ++round) {
        const int first = random.bounded(2);
        for (int k = 0; k < 2; ++k) {
            const int side = (first + k) % 2;
            QProcess probe;
            probe.setStandardErrorFile(QProcess::nullDevice());
            QElapsedTimer timer;
            timer.start();
            probe.start(QCoreApplication::applicationFilePath(),
                        {QStringLiteral("--start-probe"), side == 0 ? QStringLiteral("app") : QStringLiteral("minimal"),
                         folder.path()});
            while (!probe.canReadLine() && probe.waitForReadyRead(20000)) {
            }
            mapped[side].add(millisecondsSince(timer));
            probe.readLine();
            while (!probe.canReadLine() && probe.waitForReadyRead(20000)) {
            }
            memory[side].add(probe.readLine().split(' ').value(1).trimmed().toDouble() / 1024.0);
            probe.waitForFinished(10000);
        }
    }
    rows.append({QStringLiteral("start to window mapped"), mapped[0], mapped[1], QStringLiteral("minimal window"),
                 QStringLiteral("<= 1.3x limit")});
    rows.append({QStringLiteral("private memory after start (MiB)"), memory[0], memory[1],
                 QStringLiteral("minimal window"), QStringLiteral("<= 2x limit")});
}

void Bench::update()
{
    if (base10.isEmpty() || !QFile::exists(base10))
        return;
    QTemporaryDir work;
    const QString member = work.filePath(DrugDatabase::drugDatabaseName);
    QFile::copy(base10, member);
    const QString archive = work.filePath(QStringLiteral("base.zip"));
    if (QProcess::execute(QStringLiteral("zip"), {QStringLiteral("-j"), QStringLiteral("-q"), archive, member}) != 0)
        return;
    Samples time;
    Samples limit;
    Samples peak;
    const QString target = work.filePath(QStringLiteral("installed.sqlite3"));
    QFile::copy(member, target);
    for (int round = 0; round < 5; ++round) {
        const int first = random.bounded(2);
        for (int k = 0; k < 2; ++k) {
            if ((first + k) % 2 == 0) {
                QProcess probe;
                probe.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--unzip-probe"), archive, target});
                probe.waitForFinished(120000);
                const QList<QByteArray> fields = probe.readAllStandardOutput().trimmed().split(' ');
                time.add(fields.value(1).toDouble());
                peak.add(fields.value(2).toDouble() / 1024.0);
            } else {
                QProcess unzip;
                unzip.setStandardOutputFile(work.filePath(QStringLiteral("unzipped.sqlite3")));
                QElapsedTimer timer;
                timer.start();
                unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), archive, DrugDatabase::drugDatabaseName});
                unzip.waitForFinished(120000);
                limit.add(millisecondsSince(timer));
            }
        }
    }
    const double baseMiB = double(QFileInfo(member).size()) / 1048576.0;
    rows.append({QStringLiteral("update: unpack and replace %1 MiB").arg(baseMiB, 0, 'f', 0), time, limit,
                 QStringLiteral("unzip -p"), QStringLiteral("<= 1.5x limit")});
    Samples baseSize;
    baseSize.add(baseMiB);
    rows.append({QStringLiteral("update: memory added at peak (MiB)"), peak, baseSize, QStringLiteral("base size"),
                 QStringLiteral("<= 1.2x limit")});
}

void Bench::report(const QString& jsonPath)
{
    QTextStream out(stdout);
    out << QStringLiteral("%1 %2 %3 %4 %5  %6\n")
               .arg(QStringLiteral("figure (ms unless named)"), -46)
               .arg(QStringLiteral("median"), 8)
               .arg(QStringLiteral("p95"), 8)
               .arg(QStringLiteral("limit med"), 10)
               .arg(QStringLiteral("limit p95"), 10)
               .arg(QStringLiteral("goal"));
    QJsonArray figures;
    for (const Row& row : qAsConst(rows)) {
        out << QStringLiteral("%1 %2 %3 %4 %5  %6 (limit: %7)\n")
                   .arg(row.figure, -46)
                   .arg(row.measured.median(), 8, 'f', 2)
                   .arg(row.measured.p95(), 8, 'f', 2)
                   .arg(row.limit.median(), 10, 'f', 2)
                   .arg(row.limit.p95(), 10, 'f', 2)
                   .arg(row.goal, row.limitName);
        QJsonObject figure{{QStringLiteral("figure"), row.figure},
                           {QStringLiteral("measured"), row.measured.toJson()},
                           {QStringLiteral("limit"), row.limit.toJson()},
                           {QStringLiteral("limit_name"), row.limitName},
                           {QStringLiteral("goal"), row.goal}};
        figures.append(figure);
    }
    for (auto it = memoryFigures.constBegin(); it != memoryFigures.constEnd(); ++it) {
        if (it.key().endsWith(QLatin1String("_kb")))
            out << it.key() << ' ' << it.value().toDouble() / 1024.0 << " MiB\n";
        else
            out << it.key() << ' ' << it.value().toInt() << '\n';
    }
    if (memoryFigures.contains(QStringLiteral("private_after_20_kb"))) {
        const double growth = memoryFigures.value(QStringLiteral("private_after_uses_kb")).toDouble()
                              / memoryFigures.value(QStringLiteral("private_after_20_kb")).toDouble();
        out << "private memory growth over " << memoryFigures.value(QStringLiteral("uses")).toInt()
            << " searches and scans: " << QString::number((growth - 1) * 100, 'f', 1) << "% (goal <= 10%)\n";
    }
    QFile json(jsonPath);
    if (json.open(QIODevice::WriteOnly)) {
        json.write(QJsonDocument(QJsonObject{{QStringLiteral("base"), base},
                                             {QStringLiteral("base10"), base10},
                                             {QStringLiteral("rounds"), rounds},
                                             {QStringLiteral("figures"), figures},
                                             {QStringLiteral("memory"), memoryFigures}})
                       .toJson());
    }
    out << "Wrote " << jsonPath << '\n';
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc >= 3 && qstrcmp(argv[1], "--start-probe") == 0)
        return startProbe(argc, argv);
    if (argc >= 4 && qstrcmp(argv[1], "--unzip-probe") == 0)
        return unzipProbe(argv);

    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    QCommandLineParser parser;
    const QCommandLineOption baseOption(QStringLiteral("base"), QStringLiteral("Market-size base."),
                                        QStringLiteral("file"), QStringLiteral(QUILLARD_MARKET_DATABASE));
    const QCommandLineOption base10Option(QStringLiteral("base10"), QStringLiteral("Base ten times the market."),
                                          QStringLiteral("file"), QStringLiteral(QUILLARD_MARKET10_DATABASE));
    const QCommandLineOption roundsOption(QStringLiteral("rounds"), QStringLiteral("Rounds per figure."),
                                          QStringLiteral("n"), QStringLiteral("20"));
    const QCommandLineOption figuresOption(
        QStringLiteral("figures"), QStringLiteral("Figures to measure (all by default)."), QStringLiteral("list"),
        QStringLiteral("keystroke,scan,memory,scale,start,update"));
    const QCommandLineOption jsonOption(QStringLiteral("json"), QStringLiteral("JSON output."), QStringLiteral("file"),
                                        QStringLiteral("bench_counter.json"));
    const QCommandLineOption usesOption(QStringLiteral("uses"),
                                        QStringLiteral("Searches and scans of the memory figure."), QStringLiteral("n"),
                                        QStringLiteral("10000"));
    const QCommandLineOption heapOption(
        QStringLiteral("end-at-once"),
        QStringLiteral("End right after the figures, before anything is torn down, so that a heap profiler "
                       "reports what was alive as the last figure was taken."));
    parser.addOptions({baseOption, base10Option, roundsOption, figuresOption, jsonOption, usesOption, heapOption});
    parser.addHelpOption();
    parser.process(app);
    qInstallMessageHandler(dropDebugLines);

    Bench bench(parser.value(baseOption), parser.value(base10Option), std::max(1, parser.value(roundsOption).toInt()));
    bench.uses = std::max(1, parser.value(usesOption).toInt());
    if (!bench.setUp()) {
        QTextStream(stderr) << "bench_counter: set-up failed (base, simulator port or display)\n";
        return 1;
    }
    const QStringList figures = parser.value(figuresOption).split(QLatin1Char(','));
    const std::vector<std::pair<QString, std::function<void()>>> steps = {
        {QStringLiteral("keystroke"), [&bench] { bench.keystrokes(QStringLiteral("market")); }},
        {QStringLiteral("scan"), [&bench] { bench.scanFigure(); }},
        {QStringLiteral("memory"), [&bench] { bench.memory(); }},
        {QStringLiteral("scale"), [&bench] { bench.scale(); }},
        {QStringLiteral("start"), [&bench] { bench.start(); }},
        {QStringLiteral("update"), [&bench] { bench.update(); }},
    };
    for (const auto& [name, step] : steps) {
        if (figures.contains(name)) {
            QTextStream(stderr) << name << "...\n";
            step();
        }
    }
    bench.report(parser.value(jsonOption));
    if (parser.isSet(heapOption))
        _exit(0);
    return 0;
}
