#include "pdfdownloader.h"

#include "appdir.h"
#include "utils/raven.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QPixmap>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStandardPaths>

namespace {

const char* const sourcePath = "../QuillardDesktop/utils/pdfdownloader";
constexpr int checkTimeoutMs = 30000;
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
    const QString bundled = programDir() + QStringLiteral("/utils/poppler/") + file;
    if (QFileInfo::exists(bundled))
        return bundled;
    const QString onPath = QStandardPaths::findExecutable(file);
    return onPath.isEmpty() ? bundled : onPath;
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
    , tempPath(programDir() + QStringLiteral("/temp/"))
{
    resetHttp();
    const auto finished = qOverload<int, QProcess::ExitStatus>(&QProcess::finished);
    connect(&infoProcess, finished, this, &PDFDownloader::onInfoProcess_finished);
    connect(&convertProcess, finished, this, &PDFDownloader::onConvertProcess_finished);
    connect(&infoProcess, &QProcess::errorOccurred, this, &PDFDownloader::onInfoProcess_error);
    connect(&convertProcess, &QProcess::errorOccurred, this, &PDFDownloader::onConvertProcess_error);
}

PDFDownloader::~PDFDownloader()
{
    // A tool still running would otherwise report its end to a half-destroyed object.
    stopTools();
}

void PDFDownloader::download(const QString& url, const QString& fileName, const QString& extension)
{
    if (busy) {
        // The new request supersedes the running one, which ends without a signal.
        stopRun();
        removeFiles();
        busy = false;
    }
    this->fileName = fileName;
    this->extension = extension;

    if (isConverted()) {
        qDebug().noquote() << "D/PDFDownloader::download | File is already converted";
        emit fileReady();
        return;
    }
    busy = true;
    http->get(url);
}

void PDFDownloader::cancel()
{
    if (!busy)
        return;
    stopRun();
    removeFiles();
    busy = false;
    emit error();
}

QPixmap PDFDownloader::page(int index) const
{
    if (index < 0 || (pages > 0 && index >= pages))
        return QPixmap();
    if (pages < 2)
        return QPixmap(tempPath + fileName + QStringLiteral(".png"));
    const int digits = QString::number(pages).size();
    return QPixmap(tempPath + fileName + QLatin1Char('-')
                   + QStringLiteral("%1").arg(index + 1, digits, 10, QLatin1Char('0'))
                   + QStringLiteral(".png"));
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

void PDFDownloader::onFileGet_result(QNetworkReply* reply)
{
    if (!busy)
        return;
    if (reply->error() != QNetworkReply::NoError) {
        qWarning().noquote() << "Error" << reply->errorString();
        report("onFileGet_result", __LINE__, QStringLiteral("Error:") + reply->errorString());
        busy = false;
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
    if (!busy)
        return;
    if (exitStatus == QProcess::CrashExit || exitCode != 0) {
        qDebug().noquote() << "D/PDFDownloader::onInfoProcess_finished | pdfinfo ended with" << exitCode;
        fail();
        return;
    }
    pages = pageCountOf(QString::fromLocal8Bit(infoProcess.readAllStandardOutput()));
    qDebug().noquote() << "Page count" << pages;
    if (pages < 1) {
        // Nothing to show: a document that pdfinfo reads without naming its pages.
        fail();
        return;
    }

    convertProcess.close();
    convertProcess.setWorkingDirectory(tempPath);
    qDebug().noquote() << "Temp path" << tempPath;
    // No output root: pdftocairo derives it from the input name, which gives
    // the page names that page() reads.
    QStringList arguments{QStringLiteral("-png")};
    if (pages == 1)
        arguments << QStringLiteral("-singlefile");
    arguments << fileName + extension;
    convertProcess.start(pdfToCairoPath, arguments);
}

void PDFDownloader::onConvertProcess_finished(int exitCode, QProcess::ExitStatus exitStatus)
{
    if (!busy)
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
    busy = false;
    emit fileReady();
}

void PDFDownloader::onInfoProcess_error(QProcess::ProcessError error)
{
    qDebug().noquote() << "ProcessError" << error;
    // A crash is followed by finished(), which ends the attempt; only a tool
    // that never started ends it here.
    if (!busy || error != QProcess::FailedToStart)
        return;
    report("onInfoProcess_error", __LINE__, QStringLiteral("PDF info error: %1").arg(int(error)));
    fail();
}

void PDFDownloader::onConvertProcess_error(QProcess::ProcessError error)
{
    qDebug().noquote() << "ProcessError" << error;
    if (!busy || error != QProcess::FailedToStart)
        return;
    qWarning().noquote() << "D/PDFDownloader::onConvertProcess_error | pdftocairo did not start:"
                         << pdfToCairoPath;
    fail();
}

bool PDFDownloader::isConverted()
{
    pages = 0;
    qDebug().noquote() << tempPath;

    int found = 0;
    const QStringList names = QDir(tempPath).entryList(QDir::Files, QDir::Unsorted);
    for (const QString& name : names) {
        if (isPageFile(name))
            ++found;
    }
    if (found == 0)
        return false;

    QProcess info;
    info.setWorkingDirectory(tempPath);
    info.start(pdfInfoPath, {fileName + extension});
    const bool finished = info.waitForFinished(checkTimeoutMs);
    if (!finished || info.exitStatus() != QProcess::NormalExit || info.exitCode() != 0) {
        if (info.state() != QProcess::NotRunning) {
            info.kill();
            info.waitForFinished(killTimeoutMs);
        }
        removeFiles();
        return false;
    }
    const int count = pageCountOf(QString::fromLocal8Bit(info.readAllStandardOutput()));
    if (count != found) {
        removeFiles();
        return false;
    }
    pages = count;
    return true;
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
        busy = false;
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
    infoProcess.close();
    infoProcess.setWorkingDirectory(tempPath);
    qDebug().noquote() << "Temp path = " << tempPath;
    // The stem goes to the tool as one argument, so that a name with a blank
    // or a quote isn't split into several.
    infoProcess.start(pdfInfoPath, {fileName + extension});
}

void PDFDownloader::stopRun()
{
    resetHttp();
    stopTools();
}

void PDFDownloader::stopTools()
{
    for (QProcess* process : {&convertProcess, &infoProcess}) {
        if (process->state() == QProcess::NotRunning)
            continue;
        // The end of a stopped tool is no result: its signals stay unheard.
        const QSignalBlocker blocker(process);
        process->kill();
        process->waitForFinished(killTimeoutMs);
    }
}

void PDFDownloader::resetHttp()
{
    // Dropping the old object ends its request without a signal.
    http = std::make_unique<QtHttpGet>();
    connect(http.get(), &QtHttpGet::result, this, &PDFDownloader::onFileGet_result);
}

void PDFDownloader::fail()
{
    removeFiles();
    busy = false;
    emit error();
}
