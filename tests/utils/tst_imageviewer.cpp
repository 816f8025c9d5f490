#include "utils/imageviewer.h"
#include "utils/keyboardreader.h"
#include "utils/simpleimageviewersource.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QLabel>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

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
        list << QPixmap(300, 420);
        list.last().fill(pageColour(i));
    }
    return list;
}

struct Viewer
{
    explicit Viewer(int count)
        : source(pages(count))
        , viewer(QStringLiteral("Ulotka"), &source, 0.5f, 4.0f)
    {
        viewer.resize(700, 800);
        viewer.show();
        viewer.showFirstPage();
    }

    template<typename T> T* child(const char* name) { return viewer.findChild<T*>(QLatin1String(name)); }
    QRgb shownColour()
    {
        const QImage image = child<QLabel>("image")->pixmap(Qt::ReturnByValue).toImage();
        return image.pixel(image.width() / 2, image.height() / 2);
    }

    SimpleImageViewerSource source;
    ImageViewer viewer;
};

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

class TestImageViewer : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        KeyboardReader::instance()->keyUp(ctrlKey, QDateTime::currentMSecsSinceEpoch(), QStringLiteral("Ctrl"));
    }

    // Leafed through to the last page, where "next" stops, then printed: every page on a
    // sheet of its own, not only the one on screen.
    void pagingAndPrint()
    {
        const int count = 3;
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("druk.pdf"));
        {
            Viewer v(count);
            auto* prev = v.child<QPushButton>("prevButton");
            auto* next = v.child<QPushButton>("nextButton");
            QCOMPARE(v.shownColour(), pageColour(0).rgb());
            QVERIFY(prev->isVisible());
            QVERIFY(next->isVisible());
            for (int i = 1; i < count; ++i) {
                QTest::mouseClick(next, Qt::LeftButton);
                QCOMPARE(v.shownColour(), pageColour(i).rgb());
            }
            QVERIFY(!next->isEnabled());
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFileName(file);
            v.viewer.print(&printer);
        }

        QProcess render;
        render.start(QStringLiteral("pdftocairo"),
                     {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("10"), file, dir.filePath(QStringLiteral("p"))});
        QVERIFY(render.waitForFinished(30000));
        QCOMPARE(render.exitCode(), 0);
        QCOMPARE(QDir(dir.path()).entryList({QStringLiteral("p-*.png")}).size(), count);
        for (int i = 0; i < count; ++i) {
            const QImage sheet(dir.filePath(QStringLiteral("p-%1.png").arg(i + 1)));
            const QColor centre = sheet.pixelColor(sheet.width() / 2, sheet.height() / 2);
            const QColor wanted = pageColour(i).toRgb();
            QVERIFY2(qAbs(centre.red() - wanted.red()) + qAbs(centre.green() - wanted.green())
                             + qAbs(centre.blue() - wanted.blue()) <= 6,
                     qPrintable(QString::number(i)));
        }
    }

    void zoom_data()
    {
        QTest::addColumn<float>("start");
        QTest::addColumn<QString>("button"); // none: the wheel turns
        QTest::addColumn<bool>("modifier");
        QTest::addColumn<int>("delta");
        QTest::addColumn<float>("zoom");
        QTest::addColumn<bool>("scrolled");

        QTest::newRow("zoom in at 3.75 stops at 4.0") << 3.75f << "pushButton_2" << false << 0 << 4.0f << false;
        QTest::newRow("zoom out at 0.5 stays") << 0.5f << "pushButton_3" << false << 0 << 0.5f << false;
        QTest::newRow("wheel alone scrolls") << 2.0f << "" << false << -120 << 2.0f << true;
        QTest::newRow("modifier and a notch up zooms in by 0.15") << 2.0f << "" << true << 120 << 2.15f << false;
        QTest::newRow("modifier and a notch down zooms out by 0.15") << 2.0f << "" << true << -120 << 1.85f << false;
    }

    void zoom()
    {
        QFETCH(float, start);
        QFETCH(QString, button);
        QFETCH(bool, modifier);
        QFETCH(int, delta);
        Viewer v(1);
        v.viewer.zoomBy((start - 1.0f) * 100.0f);
        auto* area = v.child<QScrollArea>("scrollArea");
        QTRY_VERIFY(start < 1.0f || area->verticalScrollBar()->maximum() > 0);

        if (modifier)
            KeyboardReader::instance()->keyDown(ctrlKey, QDateTime::currentMSecsSinceEpoch());
        if (button.isEmpty())
            turnWheel(area->viewport(), delta);
        else
            QTest::mouseClick(v.viewer.findChild<QPushButton*>(button), Qt::LeftButton);
        QTEST(v.viewer.currentZoom(), "zoom");
        QTEST(area->verticalScrollBar()->value() > 0, "scrolled");
    }
};

QTEST_MAIN(TestImageViewer)
#include "tst_imageviewer.moc"
