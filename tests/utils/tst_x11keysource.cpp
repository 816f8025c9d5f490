#include "utils/keyboardreader.h"
#include "utils/x11keysource.h"

#include <QApplication>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QtTest>

#include <X11/Xlib.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <vector>

// Drives the real X server's keyboard with xdotool (XTest) while recording it.
// Runs under `xvfb-run -a`; skips where there is no X server with RECORD.
class TestX11KeySource : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        xdotool = QStandardPaths::findExecutable(QStringLiteral("xdotool"));
    }

    void virtualKeys_data()
    {
        QTest::addColumn<QByteArray>("keyName");
        QTest::addColumn<uint>("keysym");
        QTest::addColumn<int>("vkCode");

        QTest::newRow("keypad 1 without Num Lock") << QByteArray("KP1") << uint(XK_KP_End) << 0x61;
        QTest::newRow("keypad Enter is Return") << QByteArray("KPEN") << uint(XK_KP_Enter) << 0x0D;
        QTest::newRow("Polish a with ogonek has no code") << QByteArray("AC01") << uint(XK_aogonek) << 0;
    }

    void virtualKeys()
    {
        QFETCH(QByteArray, keyName);
        QFETCH(uint, keysym);
        QTEST(X11KeySource::virtualKey(keyName, keysym), "vkCode");
    }

    void layouts_data()
    {
        QTest::addColumn<QByteArray>("layout");
        QTest::addColumn<QString>("rows");

        QTest::newRow("Polish") << QByteArray("pl") << QStringLiteral("1234567890QWERTYUIOP");
        QTest::newRow("German") << QByteArray("de") << QStringLiteral("1234567890QWERTZUIOP");
        QTest::newRow("Czech, accents unshifted") << QByteArray("cz") << QStringLiteral("1234567890QWERTZUIOP");
        QTest::newRow("French, digits shifted") << QByteArray("fr") << QStringLiteral("1234567890AZERTYUIOP");
    }

    void layouts()
    {
        // Every key of the real keymap, as the server would name it, in keycode
        // order: only the number row gives digits, and the letters follow the layout.
        QFETCH(QByteArray, layout);
        xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
        const xkb_rule_names names{"evdev", "pc105", layout.constData(), "", ""};
        xkb_keymap* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
        xkb_context_unref(context);
        QVERIFY(keymap);
        QString typed;
        for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= xkb_keymap_max_keycode(keymap); ++key) {
            const xkb_keysym_t* symbols = nullptr;
            const bool hasSymbol = xkb_keymap_key_get_syms_by_level(keymap, key, 0, 0, &symbols) > 0;
            const QByteArray name = xkb_keymap_key_get_name(keymap, key);
            const int vkCode = X11KeySource::virtualKey(name, hasSymbol ? symbols[0] : XKB_KEY_NoSymbol);
            if ((vkCode >= 0x30 && vkCode <= 0x39) || (name.startsWith("AD") && vkCode >= 0x41 && vkCode <= 0x5A))
                typed += QChar(vkCode);
        }
        xkb_keymap_unref(keymap);
        QTEST(typed, "rows");
    }

    void init()
    {
        const QByteArray function = QTest::currentTestFunction();
        if (function == "virtualKeys" || function == "layouts")
            return;
        if (!X11KeySource::isSupported())
            QSKIP("No X server with RECORD on DISPLAY");
        if (xdotool.isEmpty())
            QSKIP("xdotool is not installed");
        // On xcb the program's reader records the whole X session, not only its
        // own windows, and none of them needs to be shown.
        reader = KeyboardReader::instance();
        auto* recording = reader->findChild<X11KeySource*>();
        QVERIFY(recording);
        QTRY_VERIFY(recording->isRecording());
    }

    // A scanner's burst is read end to end by the scan and shortcut road tests.
    void slowTypingIsNoScan()
    {
        // The events are read only after xdotool is done: the gaps that count are
        // the server's (xdotool spends half its delay per key: about 150 ms between
        // key-downs), not the moments this test reads them.
        QSignalSpy readings(reader, &KeyboardReader::newReading);
        QSignalSpy sequences(reader, &KeyboardReader::shortcut);
        typeKeys({"type", "--delay", "300", "5909990000029"});
        QTRY_COMPARE(sequences.count(), 13);
        QCOMPARE(readings.count(), 0);
    }

    void frenchLayoutWhileRecording()
    {
        // The layout turns French while recording: the "&" key still reads 1, and
        // the key that now types Q is not named from the old layout.
        Display* display = XOpenDisplay(nullptr);
        const int first = 10; // the evdev keycodes of the "1" key to the "A" key
        const int count = 38 - first + 1;
        int perKeycode = 0;
        KeySym* saved = XGetKeyboardMapping(display, first, count, &perKeycode);
        const auto restore = qScopeGuard([&] {
            XChangeKeyboardMapping(display, first, perKeycode, saved, count);
            XFree(saved);
            XCloseDisplay(display);
        });
        std::vector<KeySym> french(saved, saved + count * perKeycode);
        std::fill_n(french.begin(), perKeycode, XK_ampersand);
        const auto keyQ = french.begin() + (24 - first) * perKeycode;
        std::swap_ranges(keyQ, keyQ + perKeycode, french.begin() + (38 - first) * perKeycode);
        XChangeKeyboardMapping(display, first, perKeycode, french.data(), count);
        XSync(display, False);

        QSignalSpy sequences(reader, &KeyboardReader::shortcut);
        typeKeys({"key", "ampersand", "q"});
        QTRY_COMPARE(sequences.count(), 2);
        QCOMPARE(sequences.at(0).at(0).value<QKeySequence>(), QKeySequence(QStringLiteral("1")));
        QCOMPARE(sequences.at(1).at(0).value<QKeySequence>(), QKeySequence(QStringLiteral("Q")));
    }

private:
    void typeKeys(const QStringList& arguments)
    {
        QCOMPARE(QProcess::execute(xdotool, arguments), 0);
    }

    QString xdotool;
    KeyboardReader* reader = nullptr;
};

int main(int argc, char* argv[])
{
    // The source needs a real X server; without one the program still starts
    // (offscreen) so that the tests can skip themselves.
    qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsEmpty("DISPLAY") ? "offscreen" : "xcb");
    QApplication app(argc, argv);
    TestX11KeySource test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_x11keysource.moc"
