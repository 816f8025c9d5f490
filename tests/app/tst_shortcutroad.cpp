#include "bubblebox.h"
#include "drugs/collapsiblesection.h"
#include "mainwindow.h"
#include "settings/shortcutsettingswindow.h"
#include "simulator.h"
#include "testsupport.h"
#include "utils/keyboardreader.h"
#include "utils/x11keysource.h"

#include <QApplication>
#include <QJsonDocument>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

// A scan, then Ctrl+D, typed on the X server by xdotool while another program
// has the focus. Needs an X server with RECORD (Xvfb) and xdotool.
class TestShortcutRoad : public QObject {
    Q_OBJECT

private slots:
    void scanThenChord()
    {
        if (qgetenv("DISPLAY").isEmpty() || QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty())
            QSKIP("Needs an X server (run under xvfb-run) and xdotool.");
        // Seen already: the shortcuts window must not open over the test.
        QSettings().clear();
        QSettings().setValue(QStringLiteral("seen_shortcuts_page"), true);
        delete new ShortcutSettingsWindow(nullptr);
        QTemporaryDir dir;
        Simulator simulator;
        const auto owned = TestSupport::demoWindow(dir.path(), simulator);
        QVERIFY(owned);
        MainWindow& window = *owned;
        QTRY_VERIFY(KeyboardReader::instance()->findChild<X11KeySource*>()->isRecording());

        QProcess foreign;
        foreign.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--foreign-window")});
        QVERIFY(foreign.waitForReadyRead(20000));
        const QString foreignId = QString::fromLatin1(foreign.readLine()).trimmed();
        QCOMPARE(xdotool({"windowfocus", "--sync", foreignId}), QString());

        // Paracetamol Demofarm, with all eighteen sections.
        QCOMPARE(xdotool({"type", "--delay", "20", "5909990000012"}), QString());
        BubbleBox* box = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            box = box ? box : qobject_cast<BubbleBox*>(widget);
        QTRY_VERIFY_WITH_TIMEOUT(box->isVisible(), 10000);
        QCOMPARE(box->findChild<QListWidget*>()->count(), 18);
        QTest::qWait(300);
        QCOMPARE(xdotool({"getwindowfocus"}), foreignId);
        QVERIFY(window.isHidden());

        // Let go of D before Ctrl, as a person does.
        QVERIFY(simulator.reset());
        QCOMPARE(xdotool({"keydown", "ctrl", "key", "d", "keyup", "ctrl"}), QString());
        auto* tabs = window.findChild<QTabWidget*>(QStringLiteral("tabWidget"));
        QTRY_COMPARE_WITH_TIMEOUT(tabs->currentWidget()->objectName(), QStringLiteral("Sekcje_opisowe_tab"), 10000);
        QStringList open;
        for (CollapsibleSection* section : window.findChildren<CollapsibleSection*>()) {
            if (section->isExpanded())
                open << section->title();
        }
        QCOMPARE(open, QStringList{QStringLiteral("Dawkowanie")});
        QTRY_COMPARE(xdotool({"getwindowfocus"}), QString::number(window.winId()));
        QVERIFY(!box->isVisible());
        // The record's keys come sorted; opening the section makes a click record of its own.
        const QString path = QStringLiteral("/desktop/usage/click.php");
        QTRY_VERIFY(QJsonDocument(simulator.records(path)).toJson().contains(
            R"(\"type\":\"shortcut\",\"vid\":\"100001\",\"window\":\"Dawkowanie\")"));
        foreign.kill();
        foreign.waitForFinished(5000);
    }

private:
    static QString xdotool(const QStringList& arguments)
    {
        QProcess process;
        process.start(QStringLiteral("xdotool"), arguments);
        process.waitForFinished(30000);
        return process.exitCode() == 0 ? QString::fromLatin1(process.readAllStandardOutput()).trimmed()
                                       : QStringLiteral("failed");
    }
};

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "--foreign-window") == 0) {
        // The other program: a line edit that has the focus.
        QLineEdit edit;
        edit.show();
        if (!QTest::qWaitForWindowExposed(&edit))
            return 1;
        std::printf("%llu\n", static_cast<unsigned long long>(edit.winId()));
        std::fflush(stdout);
        return app.exec();
    }
    QCoreApplication::setApplicationVersion(QStringLiteral("1.6.5.0"));
    TestShortcutRoad test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_shortcutroad.moc"
