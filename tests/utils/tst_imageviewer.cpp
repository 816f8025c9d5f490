#include "utils/imageviewer.h"
#include "utils/keyboardreader.h"
#include "utils/pdfdownloader.h"
#include "utils/simpleimageviewersource.h"

#include <QApplication>
#include <QDateTime>
#include <QLabel>
#include <QPageSize>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

#include <memory>

class TestImageViewer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void paging_data();
    void paging();
    void zoomClamp_data();
    void zoomClamp();
    void wheel_data();
    void wheel();
    void resizeKeepsZoom();
    void printToPdf_data();
    void printToPdf();
};

namespace {

constexpr int ctrlKey = 0xA2;

QColor pageColour(int index)
{
    return QColor::fromHsv((index * 37) % 360, 200, 200);
}

// Portrait pages, each of its own colour, so that a shown page tells its index.
QList<QPixmap> pages(int count)
{
    QList<QPixmap> list;
    for (int i = 0; i < count; ++i) {
        QPixmap page(300, 420);
        page.fill(pageColour(i));
        list << page;
    }
    return list;
}

struct Viewer
{
    explicit Viewer(int count, QSize size = QSize(700, 800))
        : source(pages(count))
        , viewer(QStringLiteral("Ulotka"), &source, 0.5f, 4.0f)
    {
        viewer.resize(size);
        viewer.show();
        viewer.showFirstPage();
    }

    template<typename T> T* child(const char* name) { return viewer.findChild<T*>(QLatin1String(name)); }
    QPixmap shown() { return child<QLabel>("image")->pixmap(Qt::ReturnByValue); }
    QRgb shownColour()
    {
        const QImage image = shown().toImage();
        return image.pixel(image.width() / 2, image.height() / 2);
    }

    SimpleImageViewerSource source;
    ImageViewer viewer;
};

void setModifier(bool held)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (held)
        KeyboardReader::instance()->keyDown(ctrlKey, now);
    else
        KeyboardReader::instance()->keyUp(ctrlKey, now, QStringLiteral("Ctrl"));
}

// As the window system delivers it: spontaneous, so that an unaccepted event
// travels up the parents. sendEvent() would clear that mark; QTest's own key
// events go straight to notify() for the same reason.
void turnWheel(QWidget* target, int delta)
{
    const QPoint at(target->width() / 2, target->height() / 2);
    QWheelEvent event(at, target->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(target, &event);
}

} // namespace

void TestImageViewer::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestImageViewer::cleanup()
{
    setModifier(false);
}

void TestImageViewer::paging_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("one page: no paging buttons") << 1;
    QTest::newRow("two pages") << 2;
    QTest::newRow("twelve pages") << 12;
}

void TestImageViewer::paging()
{
    QFETCH(int, count);
    Viewer v(count);
    auto* prev = v.child<QPushButton>("prevButton");
    auto* next = v.child<QPushButton>("nextButton");
    QCOMPARE(v.shownColour(), pageColour(0).rgb());
    if (count == 1) {
        QVERIFY(!prev->isVisible());
        QVERIFY(!next->isVisible());
        return;
    }

    QVERIFY(prev->isVisible() && !prev->isEnabled());
    for (int i = 1; i < count; ++i) {
        QVERIFY(next->isEnabled());
        QTest::mouseClick(next, Qt::LeftButton);
        QCOMPARE(v.viewer.currentPageIndex(), i);
        QCOMPARE(v.shownColour(), pageColour(i).rgb());
        QVERIFY(prev->isEnabled());
    }
    QVERIFY(!next->isEnabled());

    QTest::mouseClick(prev, Qt::LeftButton);
    QCOMPARE(v.viewer.currentPageIndex(), count - 2);
    QCOMPARE(v.shownColour(), pageColour(count - 2).rgb());
    QVERIFY(next->isEnabled());
    QCOMPARE(prev->isEnabled(), count > 2);
}

void TestImageViewer::zoomClamp_data()
{
    QTest::addColumn<float>("start");
    QTest::addColumn<QString>("button");
    QTest::addColumn<float>("zoom");

    QTest::newRow("zoom in at 3.75 stops at 4.0") << 3.75f << "pushButton_2" << 4.0f;
    QTest::newRow("zoom out at 0.5 stays") << 0.5f << "pushButton_3" << 0.5f;
    QTest::newRow("zoom out at 1.25 gives 0.75") << 1.25f << "pushButton_3" << 0.75f;
}

void TestImageViewer::zoomClamp()
{
    QFETCH(float, start);
    QFETCH(QString, button);
    Viewer v(1);
    v.viewer.zoomBy((start - 1.0f) * 100.0f);
    QCOMPARE(v.viewer.currentZoom(), start);
    QTest::mouseClick(v.viewer.findChild<QPushButton*>(button), Qt::LeftButton);
    QTEST(v.viewer.currentZoom(), "zoom");
}

void TestImageViewer::wheel_data()
{
    QTest::addColumn<bool>("modifier");
    QTest::addColumn<int>("delta");
    QTest::addColumn<float>("zoom");
    QTest::addColumn<bool>("scrolled");

    QTest::newRow("wheel alone scrolls") << false << -120 << 2.0f << true;
    QTest::newRow("modifier and a notch up zooms in by 0.15") << true << 120 << 2.15f << false;
    QTest::newRow("modifier and a notch down zooms out by 0.15") << true << -120 << 1.85f << false;
}

void TestImageViewer::wheel()
{
    QFETCH(bool, modifier);
    QFETCH(int, delta);
    Viewer v(1);
    v.viewer.zoomBy(100.0f);
    QScrollBar* bar = v.child<QScrollArea>("scrollArea")->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), 0);

    setModifier(modifier);
    turnWheel(v.child<QScrollArea>("scrollArea")->viewport(), delta);
    QTEST(v.viewer.currentZoom(), "zoom");
    QTEST(bar->value() > 0, "scrolled");
}

void TestImageViewer::resizeKeepsZoom()
{
    // Portrait pages in a wide window: the height decides the page's size.
    Viewer v(1, QSize(900, 600));
    v.viewer.zoomBy(50.0f);
    auto* area = v.child<QScrollArea>("scrollArea");
    QCOMPARE(v.shown().height(), qRound((area->height() - 26) * 1.5));

    v.viewer.resize(1200, 900);
    QCOMPARE(v.viewer.currentZoom(), 1.5f);
    QCOMPARE(v.shown().height(), qRound((area->height() - 26) * 1.5));
}

void TestImageViewer::printToPdf_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("paper");
    QTest::addColumn<QString>("sizeName");

    QTest::newRow("one page on A4") << 1 << int(QPageSize::A4) << "A4";
    QTest::newRow("three pages on A5") << 3 << int(QPageSize::A5) << "A5";
}

void TestImageViewer::printToPdf()
{
    QFETCH(int, count);
    QFETCH(int, paper);
    QFETCH(QString, sizeName);
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("druk.pdf"));
    {
        Viewer v(count);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        printer.setPageSize(QPageSize(QPageSize::PageSizeId(paper)));
        v.viewer.print(&printer);
    }

    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {file});
    QVERIFY(info.waitForFinished(30000));
    QCOMPARE(info.exitCode(), 0);
    const QString output = QString::fromLocal8Bit(info.readAllStandardOutput());
    QCOMPARE(PDFDownloader::pageCountOf(output), count);
    QVERIFY2(output.contains(QStringLiteral("(%1)").arg(sizeName)), qPrintable(output));

    // Every sheet carries its own page, not the one on screen.
    QProcess render;
    render.start(QStringLiteral("pdftocairo"),
                 {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("10"), file, dir.filePath(QStringLiteral("p"))});
    QVERIFY(render.waitForFinished(30000));
    QCOMPARE(render.exitCode(), 0);
    for (int i = 0; i < count; ++i) {
        const QString name = QStringLiteral("p-%1.png").arg(i + 1);
        const QImage sheet(dir.filePath(name));
        QVERIFY2(!sheet.isNull(), qPrintable(name));
        const QColor centre = sheet.pixelColor(sheet.width() / 2, sheet.height() / 2);
        const QColor wanted = pageColour(i).toRgb();
        QVERIFY2(qAbs(centre.red() - wanted.red()) + qAbs(centre.green() - wanted.green())
                         + qAbs(centre.blue() - wanted.blue()) <= 6,
                 qPrintable(name));
    }
}

QTEST_MAIN(TestImageViewer)
#include "tst_imageviewer.moc"
