#include "utils/keyboardreader.h"
#include "utils/virtualkey.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include <optional>

namespace {

constexpr int shiftKey = 0xA0;
constexpr int controlKey = 0xA2;
constexpr int returnKey = 0x0D;
constexpr int escapeKey = 0x1B;
constexpr int f1Key = 0x70;
constexpr int f2Key = 0x71;
constexpr int letterA = 0x41;
constexpr int letterD = 0x44;
constexpr int keypadZero = 0x60;

struct KeyEvent
{
    bool press;
    int vkCode;
    qint64 time;
};

// Builds a key stream with times: each key-down comes `gap` ms after the
// previous key-down, its key-up 10 ms after it.
class Keys
{
public:
    Keys& press(int vkCode, qint64 gap = 50)
    {
        now += gap;
        events.append({true, vkCode, now});
        return *this;
    }
    Keys& release(int vkCode)
    {
        events.append({false, vkCode, now + 10});
        return *this;
    }
    Keys& tap(int vkCode, qint64 gap = 50) { return press(vkCode, gap).release(vkCode); }
    Keys& digits(const QString& text, qint64 gap, std::optional<qint64> firstGap = std::nullopt)
    {
        for (int i = 0; i < text.size(); ++i)
            tap(text.at(i).unicode(), i == 0 && firstGap ? *firstGap : gap);
        return *this;
    }
    // Shift held down: the keyboard repeats its key-down between the digits.
    Keys& shiftedDigits(const QString& text, qint64 gap)
    {
        for (const QChar digit : text)
            press(shiftKey, gap / 2).tap(digit.unicode(), gap / 2);
        return *this;
    }

    QVector<KeyEvent> events;
    qint64 now = 100000;
};

void feed(KeyboardReader& reader, const QVector<KeyEvent>& events)
{
    for (const KeyEvent& event : events) {
        if (event.press)
            reader.keyDown(event.vkCode, event.time);
        else
            reader.keyUp(event.vkCode, event.time, VirtualKey::name(event.vkCode));
    }
}

// The first argument of every signal the spy caught.
template<typename T> QList<T> argumentsOf(const QSignalSpy& spy)
{
    QList<T> values;
    for (const QList<QVariant>& arguments : spy)
        values << arguments.at(0).value<T>();
    return values;
}

const QString ean = QStringLiteral("5909990000012");

} // namespace

Q_DECLARE_METATYPE(QVector<KeyEvent>)

// Types `text` into `edit` as the window system delivers it, stamped `time`.
void typeInto(QLineEdit* edit, const QString& text, qint64 time)
{
    for (const QChar character : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(character));
        press.setTimestamp(ulong(time));
        QApplication::sendEvent(edit, &press);
    }
}

class TestKeyboardReader : public QObject
{
    Q_OBJECT

private slots:
    void readings_data()
    {
        QTest::addColumn<QVector<KeyEvent>>("events");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("13 digits exactly 100 ms apart") << Keys().digits(ean, 100).events << QStringList{ean};
        // The six digits before a gap of 101 ms are dropped; six more complete a code.
        QTest::newRow("after a gap six more digits complete a code")
            << Keys().digits(ean.left(6), 30).digits(ean.mid(6), 30, 101).digits(QStringLiteral("123456"), 30).events
            << QStringList{ean.mid(6) + QStringLiteral("123456")};
        QTest::newRow("Return after 13 digits gives one reading")
            << Keys().digits(ean, 30).tap(returnKey, 30).events << QStringList{ean};
        QTest::newRow("Return after 12 digits empties the buffer")
            << Keys().digits(ean.left(12), 30).tap(returnKey, 30).digits(QStringLiteral("2"), 30).events
            << QStringList();
        QTest::newRow("14 digits: the 14th starts a new code")
            << Keys().digits(ean + QStringLiteral("4"), 30).digits(QStringLiteral("000000000001"), 30).events
            << QStringList{ean, QStringLiteral("4000000000001")};
        QTest::newRow("digits with Shift held are not collected")
            << Keys().shiftedDigits(QStringLiteral("11111"), 30).release(shiftKey).digits(ean, 30).events
            << QStringList{ean};
        // A key's release consumes the modifiers: without a repeat of Shift the
        // next digit counts again.
        QTest::newRow("a digit released takes Shift with it")
            << Keys().press(shiftKey, 30).digits(QStringLiteral("1") + ean, 30).events << QStringList{ean};
        QTest::newRow("a keypad digit inside a burst neither counts nor breaks it")
            << Keys().digits(ean.left(6), 30).tap(keypadZero + 7, 30).digits(ean.mid(6), 30).events
            << QStringList{ean};
        QTest::newRow("a letter keeps the burst alive across 120 ms between digits")
            << Keys().digits(ean.left(6), 30).tap(letterA, 60).digits(ean.mid(6), 60).events << QStringList{ean};
        QTest::newRow("a clock that went back keeps the run")
            << Keys().digits(ean.left(6), 30).digits(ean.mid(6), 30, -86000000).events << QStringList{ean};
    }

    void readings()
    {
        QFETCH(QVector<KeyEvent>, events);
        KeyboardReader reader;
        QSignalSpy spy(&reader, &KeyboardReader::newReading);
        feed(reader, events);
        QTEST(QStringList(argumentsOf<QString>(spy)), "expected");
    }

    void sequences_data()
    {
        QTest::addColumn<QVector<KeyEvent>>("events");
        QTest::addColumn<QList<QKeySequence>>("expected");
        QTest::addColumn<int>("escapes");

        // Ctrl released alone is a sequence Qt has no name for: Qt::Key_unknown.
        QTest::newRow("Ctrl held: F1 then F2, then Ctrl released")
            << Keys().press(controlKey).tap(f1Key).tap(f2Key).release(controlKey).events
            << QList<QKeySequence>{Qt::CTRL | Qt::Key_F1, Qt::Key_F2, Qt::Key_unknown} << 0;
        QTest::newRow("modifier released before the key drops out")
            << Keys().press(controlKey).press(letterD).release(controlKey).release(letterD).events
            << QList<QKeySequence>{Qt::Key_unknown, Qt::Key_D} << 0;
        // Escape acts at its press; its sequence comes at the release as any other.
        QTest::newRow("Esc pressed") << Keys().press(escapeKey).events << QList<QKeySequence>() << 1;
        QTest::newRow("Esc released") << Keys().tap(escapeKey).events << QList<QKeySequence>{Qt::Key_Escape} << 1;
    }

    void sequences()
    {
        QFETCH(QVector<KeyEvent>, events);
        KeyboardReader reader;
        QSignalSpy spy(&reader, &KeyboardReader::shortcut);
        QSignalSpy escapes(&reader, &KeyboardReader::escape);
        feed(reader, events);
        QTEST(argumentsOf<QKeySequence>(spy), "expected");
        QTEST(escapes.count(), "escapes");
    }

    void focusedLineCleared_data()
    {
        QTest::addColumn<bool>("lineHasFocus");
        QTest::addColumn<QString>("lateDigits");
        QTest::addColumn<QString>("typedAfter");
        QTest::addColumn<QString>("expectedText");

        QTest::newRow("a line without the focus keeps its text") << false << QString() << QString() << ean.left(12);
        // The window's own copy of the scanner's keys can come after the reading.
        QTest::newRow("search line with the focus is emptied, late digit too")
            << true << ean.right(1) << QString() << QString();
        // Regression: digits typed after a scan were wiped when they were part of the code.
        QTest::newRow("digits typed after the scan stay") << true << ean.right(1) << "590" << "590";
    }

    void focusedLineCleared()
    {
        QFETCH(bool, lineHasFocus);
        QFETCH(QString, lateDigits);
        QFETCH(QString, typedAfter);
        QFETCH(QString, expectedText);

        QWidget window;
        auto* edit = new QLineEdit(&window);
        auto* button = new QPushButton(&window);
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QWidget* focused = lineHasFocus ? static_cast<QWidget*>(edit) : button;
        focused->setFocus();
        QTRY_COMPARE(QApplication::focusWidget(), focused);
        // What the scanner typed into the line before its last digit.
        edit->setText(ean.left(12));

        KeyboardReader reader;
        QSignalSpy spy(&reader, &KeyboardReader::newReading);
        const Keys scan = Keys().digits(ean, 20);
        feed(reader, scan.events);
        QCOMPARE(QStringList(argumentsOf<QString>(spy)), QStringList{ean});
        const qint64 lastDigitTime = scan.events.at(scan.events.size() - 2).time;
        typeInto(edit, lateDigits, lastDigitTime);
        typeInto(edit, typedAfter, lastDigitTime + 300);
        QCOMPARE(edit->text(), expectedText);
        QTest::qWait(100);
        QCOMPARE(edit->text(), expectedText);
    }

    void ownWindowsWithoutSystemStream()
    {
        // Offscreen there is no system-wide stream: the program's reader watches
        // its own windows, and sees each key once although the event passes from
        // the window on to the line.
        KeyboardReader* reader = KeyboardReader::instance();
        QSignalSpy readings(reader, &KeyboardReader::newReading);
        QSignalSpy sequences(reader, &KeyboardReader::shortcut);

        QLineEdit edit;
        edit.show();
        QApplication::setActiveWindow(&edit);
        QVERIFY(QTest::qWaitForWindowActive(&edit));
        for (const QChar digit : ean)
            QTest::keyClick(edit.windowHandle(), Qt::Key(Qt::Key_0 + digit.digitValue()));
        QCOMPARE(QStringList(argumentsOf<QString>(readings)), QStringList{ean});
        QCOMPARE(sequences.count(), ean.size());

        sequences.clear();
        // Presses Ctrl, clicks D, releases Ctrl.
        QTest::keyClick(edit.windowHandle(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(argumentsOf<QKeySequence>(sequences), (QList<QKeySequence>{Qt::CTRL | Qt::Key_D, Qt::Key_unknown}));
    }
};

QTEST_MAIN(TestKeyboardReader)
#include "tst_keyboardreader.moc"
