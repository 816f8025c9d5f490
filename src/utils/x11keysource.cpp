#include "x11keysource.h"

#include "virtualkey.h"

#include <QDebug>
#include <QPointer>
#include <QSocketNotifier>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xproto.h>
#include <X11/extensions/record.h>
#include <X11/keysym.h>

#include <array>
#include <utility>
#include <vector>

namespace {

struct RecordedKey
{
    bool press;
    unsigned int keycode;
    qint64 time;
};

struct TranslatedKey
{
    int vkCode = 0;
    QString name;
};

int trappedError = 0;

int trapError(Display*, XErrorEvent* event)
{
    trappedError = event->error_code;
    return 0;
}

} // namespace

struct X11Record
{
    Display* control = nullptr;
    Display* data = nullptr;
    XRecordContext context = 0;
    QSocketNotifier* notifier = nullptr;
    bool recording = false;
    std::vector<RecordedKey> pending;
    // Every keycode's translation, read at the start and again when the
    // server's keyboard mapping changes, so that a key costs no round trip.
    std::array<TranslatedKey, 256> keys;
};

namespace {

// Xlib calls this from inside XRecordProcessReplies(); the keys are only
// collected here and handed on once Xlib is done with the connection.
void recordCallback(XPointer closure, XRecordInterceptData* intercepted)
{
    auto* record = reinterpret_cast<X11Record*>(closure);
    if (intercepted->category == XRecordStartOfData) {
        record->recording = true;
    } else if (intercepted->category == XRecordEndOfData) {
        record->recording = false;
    } else if (intercepted->category == XRecordFromServer
               && intercepted->data_len * 4 >= sizeof(xEvent)) {
        // The server hands device events over in our byte order.
        const auto* event = reinterpret_cast<const xEvent*>(intercepted->data);
        const int type = event->u.u.type & 0x7F;
        if (type == KeyPress || type == KeyRelease)
            record->pending.push_back(
                {type == KeyPress, event->u.u.detail, qint64(event->u.keyButtonPointer.time)});
    }
    XRecordFreeData(intercepted);
}

// Two round trips for the whole keyboard: the keysyms without modifiers and
// the XKB key names, which tell the physical key whatever the layout.
void loadKeys(X11Record& record)
{
    Display* display = record.control;
    int minKeycode = 0;
    int maxKeycode = 0;
    XDisplayKeycodes(display, &minKeycode, &maxKeycode);
    int perKeycode = 0;
    KeySym* symbols
        = XGetKeyboardMapping(display, KeyCode(minKeycode), maxKeycode - minKeycode + 1, &perKeycode);
    XkbDescPtr xkb = XkbGetMap(display, 0, XkbUseCoreKbd);
    const bool named = xkb && XkbGetNames(display, XkbKeyNamesMask, xkb) == Success && xkb->names
                       && xkb->names->keys;

    record.keys.fill({});
    for (int keycode = minKeycode; keycode <= maxKeycode; ++keycode) {
        const int column = (keycode - minKeycode) * perKeycode;
        const KeySym symbol = symbols && perKeycode > 0 ? symbols[column] : NoSymbol;
        QByteArray keyName;
        if (named && keycode <= xkb->max_key_code) {
            const char* name = xkb->names->keys[keycode].name;
            keyName = QByteArray(name, int(qstrnlen(name, XkbKeyNameLength)));
        }
        TranslatedKey& key = record.keys[std::size_t(keycode)];
        key.vkCode = X11KeySource::virtualKey(keyName, quint32(symbol));
        key.name = VirtualKey::name(key.vkCode);
        if (key.name.isEmpty() && symbol != NoSymbol)
            key.name = QString::fromLatin1(XKeysymToString(symbol));
    }
    if (xkb)
        XkbFreeKeyboard(xkb, 0, True);
    if (symbols)
        XFree(symbols);
}

} // namespace

X11KeySource::X11KeySource(QObject* parent)
    : KeySource(parent)
{
}

X11KeySource::~X11KeySource()
{
    stop();
}

bool X11KeySource::isSupported()
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    int major = 0;
    int minor = 0;
    const bool supported = XRecordQueryVersion(display, &major, &minor);
    XCloseDisplay(display);
    return supported;
}

bool X11KeySource::start()
{
    if (record)
        return true;
    record = std::make_unique<X11Record>();
    record->control = XOpenDisplay(nullptr);
    record->data = XOpenDisplay(nullptr);
    int major = 0;
    int minor = 0;
    if (!record->control || !record->data || !XRecordQueryVersion(record->control, &major, &minor)) {
        qDebug() << "D/X11KeySource::start | no X server with RECORD";
        stop();
        return false;
    }

    XRecordRange* range = XRecordAllocRange();
    if (!range) {
        stop();
        return false;
    }
    range->device_events.first = KeyPress;
    range->device_events.last = KeyRelease;
    XRecordClientSpec clients = XRecordAllClients;

    // A changed layout reaches clients that use XKB as XKB events, the others
    // as MappingNotify; either way the keys are read anew.
    const unsigned int mappingEvents = XkbNewKeyboardNotifyMask | XkbMapNotifyMask;
    XkbSelectEvents(record->control, XkbUseCoreKbd, mappingEvents, mappingEvents);
    loadKeys(*record);

    // Xlib's default error handler ends the process: a server that refuses
    // the recording must only leave us without it.
    trappedError = 0;
    const auto previousHandler = XSetErrorHandler(trapError);
    record->context = XRecordCreateContext(record->control, 0, &clients, 1, &range, 1);
    XSync(record->control, False);
    XSetErrorHandler(previousHandler);
    XFree(range);
    if (!record->context || trappedError) {
        qDebug() << "D/X11KeySource::start | the X server refused a recording, error" << trappedError;
        record->context = 0;
        stop();
        return false;
    }

    // The control connection has made the context: now the data connection
    // can enable it. Replies then arrive on the data connection as keys go by.
    if (!XRecordEnableContextAsync(record->data, record->context, recordCallback,
                                   reinterpret_cast<XPointer>(record.get()))) {
        stop();
        return false;
    }
    XFlush(record->data);
    record->notifier = new QSocketNotifier(ConnectionNumber(record->data), QSocketNotifier::Read, this);
    connect(record->notifier, &QSocketNotifier::activated, this, &X11KeySource::readRecordedEvents);
    qDebug() << "D/X11KeySource::start | recording the X keyboard, RECORD" << major << minor;
    readRecordedEvents();
    return true;
}

void X11KeySource::stop()
{
    if (!record)
        return;
    delete record->notifier;
    record->notifier = nullptr;
    if (record->context) {
        XRecordDisableContext(record->control, record->context);
        XSync(record->control, False);
    }
    if (record->data)
        XCloseDisplay(record->data);
    if (record->context)
        XRecordFreeContext(record->control, record->context);
    if (record->control)
        XCloseDisplay(record->control);
    record.reset();
}

bool X11KeySource::isRecording() const
{
    return record && record->recording;
}

void X11KeySource::readRecordedEvents()
{
    if (!record)
        return;
    XRecordProcessReplies(record->data);
    // The control connection gets no events but those of a changed mapping;
    // they are read before the keys, so a key typed after a change of layout
    // is read with the new one.
    bool mappingChanged = false;
    while (XPending(record->control)) {
        XEvent event;
        XNextEvent(record->control, &event);
        mappingChanged = true;
    }
    if (mappingChanged)
        loadKeys(*record);

    std::vector<RecordedKey> keys;
    std::swap(keys, record->pending);
    const QPointer<X11KeySource> self(this);
    for (const RecordedKey& key : keys) {
        // A receiver may stop this source in the middle of a burst.
        if (!self || !record)
            return;
        // A copy: a receiver that stops this source frees the table.
        const TranslatedKey translated = record->keys[key.keycode & 0xFF];
        if (key.press)
            emit keyPressed(translated.vkCode, key.time);
        else
            emit keyReleased(translated.vkCode, key.time, translated.name);
    }
}

namespace {

int keysymVirtualKey(quint32 keysym)
{
    if (keysym >= XK_F1 && keysym <= XK_F24)
        return 0x70 + int(keysym - XK_F1);
    if (keysym >= XK_KP_0 && keysym <= XK_KP_9)
        return 0x60 + int(keysym - XK_KP_0);
    switch (keysym) {
    case XK_BackSpace: return 0x08;
    case XK_Tab: case XK_ISO_Left_Tab: return 0x09;
    case XK_Return: case XK_KP_Enter: return 0x0D;
    case XK_Pause: return 0x13;
    case XK_Caps_Lock: return 0x14;
    case XK_Escape: return 0x1B;
    case XK_Prior: return 0x21;
    case XK_Next: return 0x22;
    case XK_End: return 0x23;
    case XK_Home: return 0x24;
    case XK_Left: return 0x25;
    case XK_Up: return 0x26;
    case XK_Right: return 0x27;
    case XK_Down: return 0x28;
    case XK_Print: return 0x2C;
    case XK_Insert: return 0x2D;
    case XK_Delete: return 0x2E;
    case XK_Super_L: return 0x5B;
    case XK_Super_R: return 0x5C;
    case XK_Menu: return 0x5D;
    // With Num Lock off the keypad's digits have the movement symbols; Windows
    // names them "Num 1" and so on too, and they never count as scanner digits.
    case XK_KP_Insert: return 0x60;
    case XK_KP_End: return 0x61;
    case XK_KP_Down: return 0x62;
    case XK_KP_Next: return 0x63;
    case XK_KP_Left: return 0x64;
    case XK_KP_Begin: return 0x65;
    case XK_KP_Right: return 0x66;
    case XK_KP_Home: return 0x67;
    case XK_KP_Up: return 0x68;
    case XK_KP_Prior: return 0x69;
    case XK_KP_Multiply: return 0x6A;
    case XK_KP_Add: return 0x6B;
    case XK_KP_Subtract: return 0x6D;
    case XK_KP_Delete: case XK_KP_Decimal: case XK_KP_Separator: return 0x6E;
    case XK_KP_Divide: return 0x6F;
    case XK_Num_Lock: return 0x90;
    case XK_Scroll_Lock: return 0x91;
    case XK_Shift_L: return 0xA0;
    case XK_Shift_R: return 0xA1;
    case XK_Control_L: return 0xA2;
    case XK_Control_R: return 0xA3;
    case XK_Alt_L: case XK_Meta_L: return 0xA4;
    // AltGr of the Polish layout is the right Alt key.
    case XK_Alt_R: case XK_Meta_R: case XK_ISO_Level3_Shift: return 0xA5;
    default: break;
    }
    if (keysym < 0x80)
        return VirtualKey::fromCharacter(keysym);
    return 0;
}

} // namespace

int X11KeySource::virtualKey(const QByteArray& keyName, quint32 keysym)
{
    // Windows gives the digits' codes to the number row and to no other key,
    // on every layout: AZERTY's "&" key is 0x31, and its ")" key is not 0x30.
    if (keyName.size() == 4 && keyName.startsWith("AE")) {
        bool isNumber = false;
        const int number = keyName.mid(2).toInt(&isNumber);
        if (isNumber && number >= 1 && number <= 10)
            return 0x30 + number % 10;
    }
    const int code = keysymVirtualKey(keysym);
    // Without key names (no XKB) only the keysym tells the number row.
    const bool isDigit = code >= 0x30 && code <= 0x39;
    return isDigit && !keyName.isEmpty() ? 0 : code;
}
