#pragma once

#include "imageviewersource.h"
#include "qthttpget.h"

#include <QObject>
#include <QPixmap>
#include <QProcess>
#include <QString>

#include <memory>

// Fetches a PDF into the program's temp/ folder and has poppler count and
// render its pages to PNG files there; a document rendered once is served from
// disk. One document at a time; its pages are the viewer's source. The tools
// run as child processes whose end comes back as a signal: nothing here waits.
class PDFDownloader : public QObject, public ImageViewerSource
{
    Q_OBJECT
    Q_DISABLE_COPY(PDFDownloader)

public:
    explicit PDFDownloader(QObject* parent = nullptr);
    ~PDFDownloader() override;

    // Asks for the document at `url`; its files in temp/ are named by
    // `fileName` and `extension` (".pdf"). fileReady() or error() follows.
    void download(const QString& url, const QString& fileName, const QString& extension);
    // Stops what runs, removes its files and emits error(); nothing happens
    // when nothing runs.
    void cancel();
    // Whether a download, check or conversion is under way.
    bool isBusy() const;

    QPixmap page(int index) const override;
    int pageCount() const override;

    // The page count in the output of pdfinfo; 0 when no line gives it.
    static int pageCountOf(const QString& pdfInfoOutput);

    // How long pdfinfo may run before it is killed, 30000 ms unless a test
    // shortens it.
    static int toolTimeLimit();
    static void setToolTimeLimit(int milliseconds);

signals:
    void error();
    void fileReady();

private slots:
    void onFileGet_result(QNetworkReply* reply);
    void onConvertProcess_finished(int exitCode, QProcess::ExitStatus exitStatus);
    void onInfoProcess_finished(int exitCode, QProcess::ExitStatus exitStatus);
    void onInfoProcess_error(QProcess::ProcessError error);
    void onConvertProcess_error(QProcess::ProcessError error);

private:
    enum class Step { Idle, Checking, Downloading, Counting, Converting, Loading };

    int countPageFiles() const;
    void checkConversion(int found);
    void endCheck(bool converted);
    void startDownload();
    bool isPageFile(const QString& name) const;
    void removeFiles();
    bool save(const QByteArray& bytes);
    void startPageCount();
    void startPageCountTool();
    // A process for one run of a tool, killed when it runs longer than
    // `limitMs` (none when 0); the caller connects and starts it.
    QProcess* newTool(int limitMs);
    // Stops listening to `process`, ends it without waiting and clears the member.
    void retire(QProcess*& process);
    void stopRun();
    // Reads the first page on a worker thread, then tells the document is ready.
    void loadFirstPage();
    QString pagePath(int index) const;
    void resetHttp();
    void fail();

    QString url;
    QString fileName;
    QString extension;
    int pages = 0;
    // PNG pages of the stem found on disk before the check.
    int foundPages = 0;
    QString pdfInfoPath;
    QString pdfToCairoPath;
    QString tempPath;
    // Replaced to drop a request in flight: QtHttpGet has no abort of its own.
    std::unique_ptr<QtHttpGet> http;
    // One process per run of a tool; one that is stopped is left to end on
    // its own, unheard, so that a new run never waits for it.
    QProcess* convertProcess = nullptr;
    QProcess* infoProcess = nullptr;
    Step step = Step::Idle;
    // The first page, read before fileReady; the others are read when shown.
    QPixmap firstPage;
    // Counts the runs, so that a page read for a run since superseded is dropped.
    int run = 0;
};
