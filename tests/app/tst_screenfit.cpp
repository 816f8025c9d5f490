#include "bubblebox.h"
#include "drugs/gifbubble.h"
#include "mainwindow.h"
#include "testsupport.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QProcess>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <map>
#include <memory>

namespace {
const char childVariable[] = "QUILLARD_SCREENFIT_CHILD";
// Every description section, two GIF decisions, three substitutes and the longest refund text.
const QString fullestDrug = QStringLiteral("5909990000012");
constexpr int tabsOfFullestDrug = 6;
constexpr int sectionsOfFullestDrug = 18;
} // namespace

// Runs in a child process on one virtual screen at one scale: the main window
// as a window manager would maximize it, after a scan of the fullest demo drug.
class tst_ScreenFitOnThisScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(TestSupport::useDemoDatabase(dir.path()));
        // No simulator: the page works from the local base, offline.
        window = std::make_unique<MainWindow>(nullptr);
        available = QGuiApplication::primaryScreen()->availableGeometry();
        window->setGeometry(available);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->onNewReading(fullestDrug);
        // The box and the bubbles go after ten seconds, which a slow build may
        // spend laying the page out: they stay here as while the mouse rests on them.
        QCOMPARE(visibleBubbles().size(), 2);
        QWidgetList popups{notificationBox()};
        for (GifBubble* bubble : visibleBubbles())
            popups << bubble;
        for (QWidget* popup : popups) {
            for (QTimer* lifetime : popup->findChildren<QTimer*>())
                lifetime->stop();
        }
        QTRY_VERIFY(window->findChild<QWidget*>(QStringLiteral("Drug_Info"))->isVisible());
        tabs = window->findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        QTRY_COMPARE(tabs->count(), tabsOfFullestDrug);
        // Measured once the page has also filled the tabs behind the first.
        QVERIFY(TestSupport::waitForHiddenTabs(window.get()));
    }

    void leftColumnFollowsTheWindowWidth()
    {
        const int width = window->width();
        const int expected = width >= 1600 ? 700 : std::max(400, width * 2 / 5);
        QTRY_COMPARE(window->findChild<QWidget*>(QStringLiteral("widget"))->width(), expected);
    }

    void everyTabInView()
    {
        QTabBar* bar = tabs->tabBar();
        QString tabWidths;
        for (int i = 0; i < bar->count(); ++i)
            tabWidths += QString::number(bar->tabRect(i).width()) + QLatin1Char(' ');
        const QString scrolling = QStringLiteral("the tab bar scrolls: %1 wide, tabs %2").arg(bar->width()).arg(tabWidths);
        for (QToolButton* arrow : bar->findChildren<QToolButton*>())
            QVERIFY2(!arrow->isVisible(), qPrintable(scrolling));
        const QFontMetrics metrics(bar->font());
        for (int i = 0; i < bar->count(); ++i) {
            const QRect tab = bar->tabRect(i);
            const QString text = bar->tabText(i);
            QVERIFY2(bar->rect().contains(tab), qPrintable(text));
            QVERIFY2(tab.width() >= metrics.horizontalAdvance(text), qPrintable(text + " is cut"));
        }
    }

    void noLabelOfTheInformationTabClipped()
    {
        for (QWidget* tab : {tabs->widget(0)}) {
            for (QLabel* label : tab->findChildren<QLabel*>()) {
                if (!label->isVisible() || label->text().isEmpty())
                    continue;
                const QString what = label->objectName() + QStringLiteral(" \"") + label->text().left(40)
                    + QStringLiteral("\" ") + QString::number(label->width()) + QLatin1Char('x')
                    + QString::number(label->height());
                if (label->wordWrap()) {
                    QVERIFY2(label->width() >= label->minimumSizeHint().width(), qPrintable(what));
                    QVERIFY2(label->height() >= label->heightForWidth(label->width()), qPrintable(what));
                } else {
                    QVERIFY2(label->width() >= label->sizeHint().width(), qPrintable(what));
                    QVERIFY2(label->height() >= label->minimumSizeHint().height(), qPrintable(what));
                }
            }
        }
    }

    void boxAndBubblesInsideTheScreenApart()
    {
        BubbleBox* box = notificationBox();
        QVERIFY(box && box->isVisible());
        QList<QRect> shown{box->geometry()};
        for (GifBubble* bubble : visibleBubbles())
            shown << bubble->geometry();
        for (int i = 0; i < shown.size(); ++i) {
            QVERIFY2(available.contains(shown.at(i)), qPrintable(QStringLiteral("window %1 off the screen").arg(i)));
            for (int j = i + 1; j < shown.size(); ++j)
                QVERIFY2(!shown.at(i).intersects(shown.at(j)), qPrintable(QStringLiteral("%1 over %2").arg(i).arg(j)));
        }
        // As high as its rows where they fit, else every row reached by scrolling.
        const int full = 87 + 34 * sectionsOfFullestDrug;
        auto* list = box->findChild<QListWidget*>();
        QCOMPARE(list->count(), sectionsOfFullestDrug);
        if (box->height() != full) {
            QVERIFY(box->height() < full);
            QVERIFY(list->verticalScrollBar()->maximum() > 0);
            QVERIFY(list->verticalScrollBarPolicy() != Qt::ScrollBarAlwaysOff);
        }
        // The drug's name in the box's header and every section's title are read whole.
        QList<QLabel*> texts{box->findChild<QLabel*>(QStringLiteral("drug_name"))};
        for (QLabel* title : list->findChildren<QLabel*>(QStringLiteral("label")))
            texts << title;
        QCOMPARE(texts.size(), 1 + sectionsOfFullestDrug);
        for (QLabel* text : texts)
            QVERIFY2(text->fontMetrics().horizontalAdvance(text->text()) <= text->contentsRect().width(),
                     qPrintable(text->text()));
    }

    void cleanupTestCase()
    {
        for (GifBubble* bubble : visibleBubbles())
            bubble->Hide();
        if (BubbleBox* box = notificationBox())
            box->remove();
    }

private:
    static BubbleBox* notificationBox()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<BubbleBox*>(widget))
                return box;
        }
        return nullptr;
    }

    static QList<GifBubble*> visibleBubbles()
    {
        QList<GifBubble*> bubbles;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* bubble = qobject_cast<GifBubble*>(widget); bubble && bubble->isVisible())
                bubbles << bubble;
        }
        return bubbles;
    }

    QTemporaryDir dir;
    std::unique_ptr<MainWindow> window;
    QRect available;
    QTabWidget* tabs = nullptr;
};

// Starts a virtual X server per screen size and runs the test above on it at
// each scale, as a child process of its own (the scale is fixed at start).
class tst_ScreenFit : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty())
            QSKIP("Needs Xvfb.");
    }

    void fits_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("scale");
        for (const char* screen : {"1280x1024", "1366x768", "1920x1080", "2560x1440"}) {
            for (const char* scale : {"1", "1.25", "1.5"})
                QTest::addRow("%s at %s", screen, scale) << QString::fromLatin1(screen) << QString::fromLatin1(scale);
        }
    }

    void fits()
    {
        QFETCH(QString, screen);
        QFETCH(QString, scale);
        const QString display = server(screen);
        QVERIFY2(!display.isEmpty(), "Xvfb did not start");

        QTemporaryDir home;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(childVariable), QStringLiteral("1"));
        environment.insert(QStringLiteral("DISPLAY"), display);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
        // A settings store of its own: no column width dragged in another run.
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::MergedChannels);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("-silent")});
        QVERIFY(child.waitForFinished(240000));
        const QByteArray output = child.readAll();
        QVERIFY2(child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0, output.constData());
    }

    void cleanupTestCase()
    {
        for (auto& entry : servers) {
            entry.second->terminate();
            entry.second->waitForFinished(5000);
        }
        servers.clear();
    }

private:
    // The display of a virtual X server of this size, started at the first use.
    QString server(const QString& size)
    {
        auto found = servers.find(size);
        if (found != servers.end())
            return displays.at(size);
        auto xvfb = std::make_unique<QProcess>();
        // -displayfd 1: Xvfb picks a free display and writes its number on standard output.
        xvfb->start(QStringLiteral("Xvfb"), {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                             QStringLiteral("0"), size + QStringLiteral("x24"),
                                             QStringLiteral("-nolisten"), QStringLiteral("tcp")});
        if (!xvfb->waitForStarted())
            return {};
        while (!xvfb->canReadLine()) {
            if (!xvfb->waitForReadyRead(10000))
                return {};
        }
        const QString display = QLatin1Char(':') + QString::fromLatin1(xvfb->readLine().trimmed());
        servers.emplace(size, std::move(xvfb));
        displays.emplace(size, display);
        return display;
    }

    std::map<QString, std::unique_ptr<QProcess>> servers;
    std::map<QString, QString> displays;
};

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsSet(childVariable)) {
        QApplication app(argc, argv);
        tst_ScreenFitOnThisScreen test;
        return QTest::qExec(&test, argc, argv);
    }
    QCoreApplication app(argc, argv);
    tst_ScreenFit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_screenfit.moc"
