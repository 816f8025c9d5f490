#include "pdfdownloader.h"

#include "appdir.h"
#include "utils/raven.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QImage>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QPixmap>
#include <QPointer>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTimer>
#include <QtConcurrent>

#include <utility>

namespace {

const char* const sourcePath = "../QuillardDesktop/utils/pdfdownloader";
// pdfinfo may hang on a broken file: it is killed after this long, and given
// up on when even the kill doesn't end it within killTimeoutMs.
int toolLimitMs = 30000;
constexpr int killTimeoutMs = 5000;

// The installation brings its own poppler tools; a copy without them uses
// those of the system.
QString toolPath(const QString& name)
{
#ifdef Q_OS_WIN
    const QString file = name + QStringLiteral(".exe");
#else
    const QString file = name;
#endif
    const QString bundled = AppDir::bundledToolPath(file);
    if (QFileInfo::exists(bundled))
        return bundled;
    const QString onPath = QStandardPaths::findExecutable(file);
    return onPath.isEmpty() ? bundled : onPath;
}

// One manager for every document download rather than one per request: each
// manager keeps its own connection cache and network thread.
QNetworkAccessManager* documentNetwork()
{
    static QPointer<QNetworkAccessManager> manager;
    if (!manager)
        manager = new QNetworkAccessManager(QCoreApplication::instance());
    return manager;
}

void report(const char* function, int line, const QString& message)
{
    Raven::capture(3, Raven::locationString(sourcePath, function, line), message, QJsonObject(),
                   QJsonObject());
}

} // namespace

PDFDownloader::PDFDownloader(QObject* parent)
    : QObject(parent)
    , pdfInfoPath(toolPath(QStringLiteral("pdfinfo")))
    , pdfToCairoPath(toolPath(QStringLiteral("pdftocairo")))
    , tempPath(AppDir::tempDir())
{
    resetHttp();
}

PDFDownloader::~PDFDownloader()
{
    // A tool still running would otherwise report its end to a half-destroyed
    // object; killed, it is reaped with its QProcess, a child of this one.
    for (QProcess* process : findChildren<QProcess*>(QString(), Qt::FindDirectChildrenOnly)) {
        process->disconnect(this);
        process->kill();
    }
}

void PDFDownloader::download(const QString& url, const QString& fileName, const QString& extension)
{
    if (step != Step::Idle) {
        // The new request supersedes the running one, which ends without a
        // signal; a document only being checked or read is whole and stays.
        const bool checking = step == Step::Checking || step == Step::Loading;
        stopRun();
        if (!checking)
            removeFiles();
        step = Step::Idle;
    }
    this->url = url;
    this->fileName = fileName;
    this->extension = extension;
    pages = 0;
    firstPage = QPixmap();
    ++run;
    qDebug().noquote() << tempPath;

    const int found = countPageFiles();
    if (found == 0)
        startDownload();
    else
        checkConversion(found);
}

void PDFDownloader::cancel()
{
    if (step == Step::Idle)
        return;
    // A document being checked or read is whole, and stays.
    const bool checking = step == Step::Checking || step == Step::Loading;
    stopRun();
    if (!checking)
        removeFiles();
    step = Step::Idle;
    emit error();
}

bool PDFDownloader::isBusy() const
{
    return step != Step::Idle;
}

QPixmap PDFDownloader::page(int index) const
{
    if (index < 0 || (pages > 0 && index >= pages))
        return QPixmap();
    if (index == 0 && !firstPage.isNull())
        return firstPage;
    return QPixmap(pagePath(index));
}

QString PDFDownloader::pagePath(int index) const
{
    if (pages < 2)
        return tempPath + fileName + QStringLiteral(".png");
    const int digits = QString::number(pages).size();
    return tempPath + fileName + QLatin1Char('-') + QStringLiteral("%1").arg(index + 1, digits, 10, QLatin1Char('0'))
           + QStringLiteral(".png");
}

// A page is a large PNG: decoded on the GUI thread it took a frame from
// whatever the window was drawing then, a scan's page most often.
void PDFDownloader::loadFirstPage()
{
    step = Step::Loading;
    const int thisRun = run;
    auto* watcher = new QFutureWatcher<QImage>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, thisRun] {
        watcher->deleteLater();
        if (thisRun != run || step != Step::Loading)
            return;
        firstPage = QPixmap::fromImage(watcher->result());
        step = Step::Idle;
        emit fileReady();
    });
    const QString path = pagePath(0);
    watcher->setFuture(QtConcurrent::run([path] { return QImage(path); }));
}

int PDFDownloader::pageCount() const
{
    return pages;
}

int PDFDownloader::pageCountOf(const QString& pdfInfoOutput)
{
    static const QRegularExpression lineBreak(QStringLiteral("[\r\n]"));
    const QStringList lines = pdfInfoOutput.split(lineBreak, Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList parts = line.simplified().split(QStringLiteral(": "), Qt::SkipEmptyParts);
        // Pages are loaded and printed by index up to the count: a negative one reads as none.
        if (parts.size() >= 2 && parts.at(0) == QLatin1String("Pages"))
            return qMax(0, parts.at(1).toInt());
    }
    return 0;
}

int PDFDownloader::toolTimeLimit()
{
    return toolLimitMs;
}

void PDFDownloader::setToolTimeLimit(int milliseconds)
{
    toolLimitMs = milliseconds;
}

void PDFDownloader::onFileGet_result(QNetworkReply* reply)
{
    if (step != Step::Downloading)
        return;
    if (reply->error() != QNetworkReply::NoError) {
        qWarning().noquote() << "Error" << reply->errorString();
        report("onFileGet_result", __LINE__, QStringLiteral("Error:") + reply->errorString());
        step = Step::Idle;
        emit error();
        return;
    }
    qDebug().noquote() << "D/PDFDownloader::onFileGet_result | Ok";
    if (!reply->isSequential())
        reply->seek(0);
    if (save(reply->readAll()))
        startPageCount();
}

void PDFDownloader::onInfoProcess_finished(int exitCode, QProcess::ExitStatus exitStatus)
{
    const QString output = infoProcess ? QString::fromLocal8Bit(infoProcess->readAllStandardOutput()) : QString();
    retire(infoProcess);
    if (step == Step::Checking) {
        endCheck(exitStatus == QProcess::NormalExit && exitCode == 0 && pageCountOf(output) == foundPages);
        return;
    }
    if (step != Step::Counting)
        return;
    if (exitStatus == QProcess::CrashExit || exitCode != 0) {
        qDebug().noquote() << "D/PDFDownloader::onInfoProcess_finished | pdfinfo ended with" << exitCode;
        fail();
        return;
    }
    pages = pageCountOf(output);
    qDebug().noquote() << "Page count" << pages;
    if (pages < 1) {
        // Nothing to show: a document that pdfinfo reads without naming its pages.
        fail();
        return;
    }

    step = Step::Converting;
    qDebug().noquote() << "Temp path" << tempPath;
    // No output root: pdftocairo derives it from the input name, which gives
    // the page names that page() reads.
    QStringList arguments{QStringLiteral("-png")};
    if (pages == 1)
        arguments << QStringLiteral("-singlefile");
    arguments << fileName + extension;
    // The conversion of a long document may take its time: it has no limit,
    // and a new request or cancel() stops it.
    convertProcess = newTool(0);
    connect(convertProcess, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &PDFDownloader::onConvertProcess_finished);
    connect(convertProcess, &QProcess::errorOccurred, this, &PDFDownloader::onConvertProcess_error);
    convertProcess->start(pdfToCairoPath, arguments);
}

void PDFDownloader::onConvertProcess_finished(int exitCode, QProcess::ExitStatus exitStatus)
{
    retire(convertProcess);
    if (step != Step::Converting)
        return;
    if (exitStatus == QProcess::CrashExit) {
        // Told to the caller too, who would otherwise wait for a viewer in vain.
        fail();
        return;
    }
    if (exitCode != 0) {
        report("onConvertProcess_finished", __LINE__,
               QStringLiteral("Error converting pdf file, exitCode: %1").arg(exitCode));
        fail();
        return;
    }
    loadFirstPage();
}

void PDFDownloader::onInfoProcess_error(QProcess::ProcessError error)
{
    qDebug().noquote() << "ProcessError" << error;
    // A crash, a kill included, is followed by finished(), which ends the
    // attempt; only a tool that never started ends it here.
    if (error != QProcess::FailedToStart)
        return;
    retire(infoProcess);
    if (step == Step::Checking) {
        endCheck(false);
        return;
    }
    if (step != Step::Counting)
        return;
    report("onInfoProcess_error", __LINE__, QStringLiteral("PDF info error: %1").arg(int(error)));
    fail();
}

void PDFDownloader::onConvertProcess_error(QProcess::ProcessError error)
{
    qDebug().noquote() << "ProcessError" << error;
    if (error != QProcess::FailedToStart)
        return;
    retire(convertProcess);
    if (step != Step::Converting)
        return;
    qWarning().noquote() << "D/PDFDownloader::onConvertProcess_error | pdftocairo did not start:"
                         << pdfToCairoPath;
    fail();
}

int PDFDownloader::countPageFiles() const
{
    int found = 0;
    const QStringList names = QDir(tempPath).entryList(QDir::Files, QDir::Unsorted);
    for (const QString& name : names) {
        if (isPageFile(name))
            ++found;
    }
    return found;
}

// Pages of the stem are on disk: pdfinfo tells whether they are the whole
// document. Its answer comes back in onInfoProcess_finished rather than being
// waited for, since pdfinfo may hang on a broken file and the GUI thread with it.
void PDFDownloader::checkConversion(int found)
{
    step = Step::Checking;
    foundPages = found;
    startPageCountTool();
}

void PDFDownloader::endCheck(bool converted)
{
    if (converted) {
        pages = foundPages;
        qDebug().noquote() << "D/PDFDownloader::download | File is already converted";
        loadFirstPage();
        return;
    }
    // Pages deleted by hand, or a PDF that is gone or broken: fetched anew.
    removeFiles();
    startDownload();
}

void PDFDownloader::startDownload()
{
    step = Step::Downloading;
    http->get(url);
}

// Only the document's own pages: "S.png" or "S-<digits>.png". A plain
// substring test would take the pages of "S1" for those of "S" and delete them.
bool PDFDownloader::isPageFile(const QString& name) const
{
    const QString png = QStringLiteral(".png");
    if (name == fileName + png)
        return true;
    const QString prefix = fileName + QLatin1Char('-');
    if (!name.startsWith(prefix) || !name.endsWith(png))
        return false;
    const QStringRef number = name.midRef(prefix.size(), name.size() - prefix.size() - png.size());
    if (number.isEmpty())
        return false;
    for (const QChar c : number) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

void PDFDownloader::removeFiles()
{
    if (fileName.isEmpty())
        return;
    QDir temp(tempPath);
    const QStringList names = temp.entryList(QDir::Files, QDir::Unsorted);
    for (const QString& name : names) {
        if (name == fileName + extension || isPageFile(name))
            temp.remove(name);
    }
}

bool PDFDownloader::save(const QByteArray& bytes)
{
    // A copy of the program without its temp/ folder still opens documents.
    QDir().mkpath(tempPath);
    // Truncated, not appended: a file left by a broken attempt would otherwise
    // grow into a document that no tool reads.
    QFile file(tempPath + fileName + extension);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qWarning().noquote() << "Could not save file";
        step = Step::Idle;
        emit error();
        return false;
    }
    file.write(bytes);
    file.flush();
    file.close();
    return true;
}

void PDFDownloader::startPageCount()
{
    step = Step::Counting;
    qDebug().noquote() << "Temp path = " << tempPath;
    startPageCountTool();
}

void PDFDownloader::startPageCountTool()
{
    infoProcess = newTool(toolLimitMs);
    connect(infoProcess, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &PDFDownloader::onInfoProcess_finished);
    connect(infoProcess, &QProcess::errorOccurred, this, &PDFDownloader::onInfoProcess_error);
    // The stem goes to the tool as one argument, so that a name with a blank
    // or a quote isn't split into several.
    infoProcess->start(pdfInfoPath, {fileName + extension});
}

QProcess* PDFDownloader::newTool(int limitMs)
{
    auto* process = new QProcess(this);
    process->setWorkingDirectory(tempPath);
    if (limitMs <= 0)
        return process;
    auto* limit = new QTimer(process);
    limit->setSingleShot(true);
    limit->setInterval(limitMs);
    connect(process, &QProcess::started, limit, qOverload<>(&QTimer::start));
    connect(limit, &QTimer::timeout, process, [this, process, limitMs] {
        if (process->state() == QProcess::NotRunning)
            return;
        qWarning().noquote() << "D/PDFDownloader::newTool |" << process->program() << "still runs after"
                             << limitMs << "ms, killed";
        // Killed, it ends as a crash through finished().
        process->kill();
        QTimer::singleShot(killTimeoutMs, process, [this, process] {
            if (process->state() == QProcess::NotRunning)
                return;
            // Not even the kill ended it: given up on, as if it had crashed.
            if (process == infoProcess)
                onInfoProcess_finished(-1, QProcess::CrashExit);
            else if (process == convertProcess)
                onConvertProcess_finished(-1, QProcess::CrashExit);
        });
    });
    return process;
}

void PDFDownloader::retire(QProcess*& process)
{
    QProcess* old = std::exchange(process, nullptr);
    if (!old)
        return;
    // Whatever it does from now on is no result of ours.
    old->disconnect(this);
    if (old->state() == QProcess::NotRunning) {
        old->deleteLater();
        return;
    }
    // Left to end on its own rather than waited for; its object goes then.
    connect(old, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), old, &QObject::deleteLater);
    connect(old, &QProcess::errorOccurred, old, [old](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            old->deleteLater();
    });
    old->kill();
}

void PDFDownloader::stopRun()
{
    ++run;
    resetHttp();
    retire(infoProcess);
    retire(convertProcess);
}

void PDFDownloader::resetHttp()
{
    // Dropping the old object ends its request without a signal.
    http = std::make_unique<QtHttpGet>(documentNetwork());
    connect(http.get(), &QtHttpGet::result, this, &PDFDownloader::onFileGet_result);
}

void PDFDownloader::fail()
{
    removeFiles();
    step = Step::Idle;
    emit error();
}
