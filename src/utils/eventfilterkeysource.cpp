#include "eventfilterkeysource.h"

#include "virtualkey.h"

#include <QCoreApplication>
#include <QDebug>
#include <QKeyEvent>
#include <QKeySequence>

namespace {

int keypadKey(int qtKey)
{
    // With Num Lock off the keypad's digits arrive as the movement keys they
    // print: they are still keypad digits for the reader.
    switch (qtKey) {
    case Qt::Key_0: case Qt::Key_Insert: return 0x60;
    case Qt::Key_1: case Qt::Key_End: return 0x61;
    case Qt::Key_2: case Qt::Key_Down: return 0x62;
    case Qt::Key_3: case Qt::Key_PageDown: return 0x63;
    case Qt::Key_4: case Qt::Key_Left: return 0x64;
    case Qt::Key_5: case Qt::Key_Clear: return 0x65;
    case Qt::Key_6: case Qt::Key_Right: return 0x66;
    case Qt::Key_7: case Qt::Key_Home: return 0x67;
    case Qt::Key_8: case Qt::Key_Up: return 0x68;
    case Qt::Key_9: case Qt::Key_PageUp: return 0x69;
    case Qt::Key_Asterisk: return 0x6A;
    case Qt::Key_Plus: return 0x6B;
    case Qt::Key_Minus: return 0x6D;
    case Qt::Key_Period: case Qt::Key_Comma: case Qt::Key_Delete: return 0x6E;
    case Qt::Key_Slash: return 0x6F;
    case Qt::Key_Enter: case Qt::Key_Return: return 0x0D;
    default: return 0;
    }
}

} // namespace

EventFilterKeySource::EventFilterKeySource(QObject* parent)
    : KeySource(parent)
{
    clock.start();
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    qInfo() << "D/EventFilterKeySource | no system-wide key stream: the keyboard reader sees only the keys"
               " typed into this program's own windows";
}

EventFilterKeySource::~EventFilterKeySource()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
}

int EventFilterKeySource::virtualKey(int qtKey, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::KeypadModifier) {
        if (const int code = keypadKey(qtKey))
            return code;
    }
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return 0x70 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace: return 0x08;
    case Qt::Key_Tab: case Qt::Key_Backtab: return 0x09;
    case Qt::Key_Return: case Qt::Key_Enter: return 0x0D;
    case Qt::Key_Pause: return 0x13;
    case Qt::Key_CapsLock: return 0x14;
    case Qt::Key_Escape: return 0x1B;
    case Qt::Key_PageUp: return 0x21;
    case Qt::Key_PageDown: return 0x22;
    case Qt::Key_End: return 0x23;
    case Qt::Key_Home: return 0x24;
    case Qt::Key_Left: return 0x25;
    case Qt::Key_Up: return 0x26;
    case Qt::Key_Right: return 0x27;
    case Qt::Key_Down: return 0x28;
    case Qt::Key_Print: return 0x2C;
    case Qt::Key_Insert: return 0x2D;
    case Qt::Key_Delete: return 0x2E;
    case Qt::Key_Meta: return 0x5B;
    case Qt::Key_Menu: return 0x5D;
    case Qt::Key_NumLock: return 0x90;
    case Qt::Key_ScrollLock: return 0x91;
    // The toolkit doesn't tell left from right: the left keys stand for both.
    case Qt::Key_Shift: return 0xA0;
    case Qt::Key_Control: return 0xA2;
    case Qt::Key_Alt: return 0xA4;
    case Qt::Key_AltGr: return 0xA5;
    default: break;
    }
    if (qtKey > 0 && qtKey < 0x80)
        return VirtualKey::fromCharacter(uint(qtKey));
    return 0;
}

bool EventFilterKeySource::eventFilter(QObject* watched, QEvent* event)
{
    // A key event goes to its window first and then on to the widgets, each
    // seen by this filter: taking it at the window sees every key once.
    const QEvent::Type type = event->type();
    if ((type != QEvent::KeyPress && type != QEvent::KeyRelease) || !watched->isWindowType())
        return false;

    const auto* keyEvent = static_cast<const QKeyEvent*>(event);
    const int code = virtualKey(keyEvent->key(), keyEvent->modifiers());
    const qint64 time = eventTime(keyEvent);
    if (type == QEvent::KeyPress) {
        emit keyPressed(code, time);
    } else if (!keyEvent->isAutoRepeat()) {
        QString name = VirtualKey::name(code);
        if (name.isEmpty())
            name = QKeySequence(keyEvent->key()).toString(QKeySequence::NativeText);
        emit keyReleased(code, time, name);
    }
    return false;
}

qint64 EventFilterKeySource::eventTime(const QKeyEvent* event) const
{
    // Platforms stamp their events in milliseconds; the few that don't get our clock.
    return event->timestamp() ? qint64(event->timestamp()) : clock.elapsed();
}
