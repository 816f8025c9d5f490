#pragma once

#include "imageviewersource.h"
#include "qthttpget.h"

#include <QObject>
#include <QProcess>
#include <QString>

#include <memory>

// Fetches a PDF into the program's temp/ folder and has poppler count and
// render its pages to PNG files there; a document rendered once is served from
// disk. One document at a time; its pages are the viewer's source.
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

    QPixmap page(int index) const override;
    int pageCount() const override;

    // The page count in the output of pdfinfo; 0 when no line gives it.
    static int pageCountOf(const QString& pdfInfoOutput);

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
    bool isConverted();
    bool isPageFile(const QString& name) const;
    void removeFiles();
    bool save(const QByteArray& bytes);
    void startPageCount();
    void stopRun();
    void stopTools();
    void resetHttp();
    void fail();

    QString fileName;
    QString extension;
    int pages = 0;
    QString pdfInfoPath;
    QString pdfToCairoPath;
    QString tempPath;
    // Replaced to drop a request in flight: QtHttpGet has no abort of its own.
    std::unique_ptr<QtHttpGet> http;
    QProcess convertProcess;
    QProcess infoProcess;
    bool busy = false;
};
