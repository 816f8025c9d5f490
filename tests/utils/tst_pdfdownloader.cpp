#include "appdir.h"
#include "simulator.h"
#include "utils/pdfdownloader.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {
const QString pdfPath = QStringLiteral("/_sim/pdf");
} // namespace

class TestPdfDownloader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(simulator.start());
    }

    void init()
    {
        QVERIFY(simulator.reset());
        programFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(programFolder->isValid());
        setProgramDir(programFolder->path());
    }

    void cleanup()
    {
        PDFDownloader::setToolTimeLimit(30000);
    }

    void pageCountOf_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<int>("pages");

        QTest::newRow("Windows line ends") << "Producer:       x\r\nPages:          12\r\nEncrypted:      no\r\n" << 12;
        QTest::newRow("a title that names pages") << "Title:          Pages: 99\nPages:          3\n" << 3;
        QTest::newRow("no line with the pages") << "Syntax Error: Couldn't read xref table\n" << 0;
    }

    void pageCountOf()
    {
        QFETCH(QString, output);
        QTEST(PDFDownloader::pageCountOf(output), "pages");
    }

    void pagesThenFromDisk_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("stem");

        QTest::newRow("one page") << 1 << "S";
        QTest::newRow("twelve pages, two-digit numbers") << 12 << "S";
        // One argument to the tools, not split on the blanks nor read for the quotes.
        QTest::newRow("stem with blanks and quotes") << 1 << "gif \"12\" d'x";
    }

    void pagesThenFromDisk()
    {
        QFETCH(int, count);
        QFETCH(QString, stem);
        PDFDownloader downloader;
        QVERIFY(fetch(downloader, pdfUrl(count), stem));
        QCOMPARE(downloader.pageCount(), count);
        for (int i = 0; i < count; ++i)
            QVERIFY2(!downloader.page(i).isNull(), qPrintable(QString::number(i)));
        QVERIFY(downloader.page(count).isNull());
        QCOMPARE(tempFiles().size(), count + 1); // the pages and the PDF, nothing else

        // A new object, as after a restart: only the files on disk are shared.
        QVERIFY(simulator.reset());
        PDFDownloader second;
        QVERIFY(fetch(second, pdfUrl(count), stem));
        QCOMPARE(second.pageCount(), count);
        QCOMPARE(simulator.records(pdfPath).size(), 0);
    }

    void damagedCopyIsFetchedAnew_data()
    {
        QTest::addColumn<QString>("removed");

        QTest::newRow("a page deleted") << "S-02.png";
        QTest::newRow("the PDF deleted") << "S.pdf";
    }

    void damagedCopyIsFetchedAnew()
    {
        QFETCH(QString, removed);
        PDFDownloader downloader;
        QVERIFY(fetch(downloader, pdfUrl(12), QStringLiteral("S")));
        // Another document whose name begins the same must be left alone.
        PDFDownloader other;
        QVERIFY(fetch(other, pdfUrl(2), QStringLiteral("S1")));
        const QStringList whole = tempFiles();
        QVERIFY(QFile::remove(tempPath() + QLatin1Char('/') + removed));
        QVERIFY(simulator.reset());

        QVERIFY(fetch(downloader, pdfUrl(12), QStringLiteral("S")));
        QCOMPARE(simulator.records(pdfPath).size(), 1);
        QCOMPARE(tempFiles(), whole);
    }

    void failureEndsInError_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("how");

        QTest::newRow("404") << "/leaflets/brak/brak.pdf" << "";
        QTest::newRow("corrupt PDF") << "/_sim/pdf?corrupt=1" << "";
        QTest::newRow("pdfinfo can't start") << "/_sim/pdf?pages=2" << "broken pdfinfo";
        QTest::newRow("cancelled during a slow answer") << "/_sim/pdf?pages=3" << "cancel";
    }

    // One error(), no fileReady() and no files left, however the request ends.
    void failureEndsInError()
    {
        QFETCH(QString, path);
        QFETCH(QString, how);
        if (how == QLatin1String("broken pdfinfo")) {
            // A tool file that isn't a program: the installation's own copy wins over PATH.
            QVERIFY(QDir().mkpath(programFolder->path() + QStringLiteral("/utils/poppler")));
            QFile tool(programFolder->path() + QStringLiteral("/utils/poppler/pdfinfo"));
            QVERIFY(tool.open(QIODevice::WriteOnly));
            tool.write("not a program\n");
        }
        const bool cancel = how == QLatin1String("cancel");
        if (cancel)
            QVERIFY(simulator.setFault(pdfPath, QStringLiteral("slow")));

        PDFDownloader downloader;
        QSignalSpy ready(&downloader, &PDFDownloader::fileReady);
        QSignalSpy failed(&downloader, &PDFDownloader::error);
        downloader.cancel(); // nothing runs: no signal
        QCOMPARE(failed.count(), 0);
        downloader.download(simulator.baseUrl() + path, QStringLiteral("S"), QStringLiteral(".pdf"));
        if (cancel) {
            QTRY_COMPARE(simulator.records(pdfPath).size(), 1);
            downloader.cancel();
            QCOMPARE(failed.count(), 1);
        }
        QTRY_COMPARE(failed.count(), 1);
        // By then the slow answer would be complete: nothing of it may arrive.
        QTest::qWait(cancel ? 3500 : 300);
        QCOMPARE(failed.count(), 1);
        QCOMPARE(ready.count(), 0);
        QCOMPARE(tempFiles(), QStringList());
        if (cancel) {
            QVERIFY(simulator.setFault(pdfPath, QStringLiteral("none")));
            QVERIFY(fetch(downloader, pdfUrl(2), QStringLiteral("T")));
        }
    }

    void slowPdfinfoLeavesTheThreadFree_data()
    {
        QTest::addColumn<bool>("released");
        QTest::addColumn<int>("requests");

        QTest::newRow("released by the event loop: the copy on disk serves") << true << 0;
        QTest::newRow("never ends: killed at its limit, fetched anew") << false << 1;
    }

    // Regression: the check of a copy on disk ran pdfinfo with waitForFinished
    // on the GUI thread, holding the program up to 30 s.
    void slowPdfinfoLeavesTheThreadFree()
    {
        QFETCH(bool, released);
        {
            PDFDownloader first;
            QVERIFY(fetch(first, pdfUrl(2), QStringLiteral("S")));
        }
        const QString poppler = programFolder->path() + QStringLiteral("/utils/poppler");
        QVERIFY(installHangingPdfinfo(poppler));
        QVERIFY(simulator.reset());
        PDFDownloader::setToolTimeLimit(1000);

        PDFDownloader downloader;
        QSignalSpy ready(&downloader, &PDFDownloader::fileReady);
        QSignalSpy failed(&downloader, &PDFDownloader::error);
        // Runs only if download() leaves the event loop free while pdfinfo works.
        if (released) {
            QTimer::singleShot(0, this, [poppler] {
                QFile release(poppler + QStringLiteral("/release"));
                release.open(QIODevice::WriteOnly);
            });
        }
        downloader.download(pdfUrl(2), QStringLiteral("S"), QStringLiteral(".pdf"));
        QTRY_COMPARE_WITH_TIMEOUT(ready.count(), 1, 20000);
        QCOMPARE(failed.count(), 0);
        QTEST(simulator.records(pdfPath).size(), "requests");
        QCOMPARE(downloader.pageCount(), 2);
        QVERIFY(!downloader.page(1).isNull());
    }

private:
    // A pdfinfo that hangs on its first run until a file "release" appears
    // beside it, as pdfinfo may on a broken file, and is the real one after.
    static bool installHangingPdfinfo(const QString& folder)
    {
        const QString real = QStandardPaths::findExecutable(QStringLiteral("pdfinfo"));
        if (real.isEmpty() || !QDir().mkpath(folder))
            return false;
        QFile tool(folder + QStringLiteral("/pdfinfo"));
        if (!tool.open(QIODevice::WriteOnly))
            return false;
        tool.write("#!/bin/sh\n"
                   "dir=$(dirname \"$0\")\n"
                   "if [ ! -e \"$dir/hung\" ]; then\n"
                   "    : > \"$dir/hung\"\n"
                   "    while [ ! -e \"$dir/release\" ]; do sleep 0.05; done\n"
                   "fi\n"
                   "exec '" + real.toUtf8() + "' \"$@\"\n");
        tool.close();
        return tool.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }

    QString pdfUrl(int pages) const
    {
        return simulator.baseUrl() + QStringLiteral("/_sim/pdf?pages=%1").arg(pages);
    }
    QString tempPath() const { return programFolder->path() + QStringLiteral("/temp"); }
    QStringList tempFiles() const { return QDir(tempPath()).entryList(QDir::Files, QDir::Name); }
    // Waits for the one signal that ends a request.

    bool fetch(PDFDownloader& downloader, const QString& url, const QString& stem)
    {
        QSignalSpy ready(&downloader, &PDFDownloader::fileReady);
        QSignalSpy failed(&downloader, &PDFDownloader::error);
        downloader.download(url, stem, QStringLiteral(".pdf"));
        return QTest::qWaitFor([&] { return !ready.isEmpty() || !failed.isEmpty(); }, 20000)
            && ready.count() == 1 && failed.isEmpty();
    }

    Simulator simulator;
    std::unique_ptr<QTemporaryDir> programFolder;
};

QTEST_MAIN(TestPdfDownloader)
#include "tst_pdfdownloader.moc"
