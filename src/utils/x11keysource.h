#pragma once

#include "keysource.h"

#include <QByteArray>

#include <memory>

struct X11Record;

// The whole X session's key stream, read through the X RECORD extension on two
// display connections of our own: one to control the recording, one that
// carries the recorded events. The data connection is read by a socket notifier
// on the main thread, so the keys arrive there whether or not our windows are
// shown or have the focus. Times are the X server's event times.
class X11KeySource : public KeySource
{
    Q_OBJECT
    Q_DISABLE_COPY(X11KeySource)

public:
    explicit X11KeySource(QObject* parent = nullptr);
    ~X11KeySource() override;

    // True when an X server answers on DISPLAY and offers RECORD.
    static bool isSupported();

    // Starts recording; false when the server can't be reached or refuses.
    bool start();
    void stop();

    // True once the server has confirmed that the recording runs.
    bool isRecording() const;

    // The Windows virtual-key code of a key, from its XKB name ("AE01") and its
    // unshifted keysym. The number row gives the digits' codes whatever the
    // layout, and no other key does, as on Windows; other keys follow the
    // keysym, so letters follow the layout
    // and keypad keys give the keypad's codes (0x60-0x6F) whatever the state
    // of Num Lock. 0 if none.
    static int virtualKey(const QByteArray& keyName, quint32 keysym);

private:
    void readRecordedEvents();

    std::unique_ptr<X11Record> record;
};
