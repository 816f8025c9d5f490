#include "keyboardreader.h"

#include "keysource.h"

#include <QApplication>
#include <QDebug>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>

namespace {

// Windows virtual-key codes, the reader's key codes on every platform.
// The digits of the main keyboard. 0x2F, the Help key, types no digit and would
// make a reading of something that is no EAN code.
constexpr int firstAcceptedKey = 0x30;
constexpr int lastAcceptedKey = 0x39;
constexpr int returnKey = 0x0D;
constexpr int escapeKey = 0x1B;
constexpr int eanLength = 13;

bool isShiftKey(int vkCode)
{
    return vkCode == 0x10 || vkCode == 0xA0 || vkCode == 0xA1;
}

bool isControlKey(int vkCode)
{
    return vkCode == 0x11 || vkCode == 0xA2 || vkCode == 0xA3;
}

bool isAltKey(int vkCode)
{
    return vkCode == 0x12 || vkCode == 0xA4 || vkCode == 0xA5;
}

} // namespace

KeyboardReader* KeyboardReader::instance()
{
    static KeyboardReader* reader = nullptr;
    if (!reader) {
        reader = new KeyboardReader;
        reader->installHook();
    }
    return reader;
}

KeyboardReader::KeyboardReader(QObject* parent)
    : QObject(parent)
{
}

KeyboardReader::~KeyboardReader() = default;

void KeyboardReader::installHook()
{
    if (hook)
        return;
    hook = KeySource::create(this);
    connect(hook, &KeySource::keyPressed, this, &KeyboardReader::keyDown);
    connect(hook, &KeySource::keyReleased, this, &KeyboardReader::keyUp);
}

void KeyboardReader::removeHook()
{
    delete hook;
    hook = nullptr;
}

bool KeyboardReader::isModifierActive() const
{
    return shift || alt || ctrl;
}

void KeyboardReader::noteEvent(qint64 timeMs)
{
    if (!lastKeyDown)
        lastKeyDown = timeMs;
}

void KeyboardReader::keyDown(int vkCode, qint64 timeMs)
{
    noteEvent(timeMs);
    // Every key counts as activity, modifiers and letters too. A negative gap
    // (a clock that wrapped) keeps the run.
    const qint64 elapsed = timeMs - *lastKeyDown;
    lastKeyDown = timeMs;
    if (elapsed > maxInterval)
        buffer.clear();

    if (vkCode >= firstAcceptedKey && vkCode <= lastAcceptedKey && !shift) {
        buffer.append(QChar(vkCode));
        if (buffer.size() == eanLength)
            makeReading();
    } else if (vkCode == returnKey) {
        // A complete code has been read at its last digit already: Return only
        // throws away a run that is too short.
        if (buffer.size() == eanLength)
            makeReading();
        buffer.clear();
    }

    if (isControlKey(vkCode))
        ctrl = true;
    if (isAltKey(vkCode))
        alt = true;
    if (isShiftKey(vkCode))
        shift = true;

    if (vkCode == escapeKey) {
        qDebug() << "Escape pressed";
        emit escape();
    }
}

void KeyboardReader::keyUp(int vkCode, qint64 timeMs, const QString& keyName)
{
    noteEvent(timeMs);
    if (isControlKey(vkCode))
        ctrl = false;
    if (isAltKey(vkCode))
        alt = false;

    // The first key released takes the modifiers with it: with Control held,
    // F1 then F2 give Ctrl+F1 and F2.
    QString prefix;
    if (isShiftKey(vkCode)) {
        shift = false;
    } else if (shift) {
        prefix += QStringLiteral("Shift+");
        shift = false;
    }
    if (ctrl) {
        prefix += QStringLiteral("Ctrl+");
        ctrl = false;
    }
    if (alt) {
        prefix += QStringLiteral("Alt+");
        alt = false;
    }

    qDebug() << "D/KeyboardReader::keyUp |" << keyName.size() << keyName;
    emit shortcut(QKeySequence(prefix + keyName, QKeySequence::NativeText));
}

namespace {

// The focused line gets its own copy of the scanner's keys from the window
// system, and that copy may arrive after the reading: the last digit on
// Windows, where the hook sees a key before the window does, and any of them on
// X11, where the recorded stream and the window's stream are read apart. Key
// events carry the same clock as the key source, so the reading's own digits
// are those stamped no later than its last key: they are kept out of the line
// for a moment, while whatever the user types afterwards goes in.
class LateDigitFilter : public QObject
{
public:
    LateDigitFilter(QLineEdit* edit, qint64 readingTime)
        : QObject(edit)
        , readingTime(readingTime)
    {
        edit->installEventFilter(this);
        QTimer::singleShot(1000, this, &QObject::deleteLater);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return QObject::eventFilter(watched, event);
        const auto* key = static_cast<const QKeyEvent*>(event);
        return qint64(key->timestamp()) <= readingTime && key->text().size() == 1 && key->text().at(0).isDigit();
    }

private:
    qint64 readingTime;
};

} // namespace

void KeyboardReader::makeReading()
{
    qDebug() << "New keyboard scanner reading :" << buffer;
    // The scanner's digits also went on to the focused line as ordinary typing:
    // take them out again.
    if (auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
        edit->setText(QString());
        new LateDigitFilter(edit, *lastKeyDown);
    }
    emit newReading(buffer);
    buffer.clear();
}
