#pragma once

#include "keysource.h"

#include <QElapsedTimer>

class QKeyEvent;

// The key source where the platform offers no system-wide key stream (Wayland,
// the offscreen platform, X servers without RECORD): the keys that reach this
// program's own windows, seen by an application-wide event filter that lets
// every event through.
class EventFilterKeySource : public KeySource
{
    Q_OBJECT
    Q_DISABLE_COPY(EventFilterKeySource)

public:
    explicit EventFilterKeySource(QObject* parent = nullptr);
    ~EventFilterKeySource() override;

    // The Windows virtual-key code of a toolkit key; keypad keys give the
    // keypad's codes (0x60-0x6F) whatever the state of Num Lock.
    static int virtualKey(int qtKey, Qt::KeyboardModifiers modifiers);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    qint64 eventTime(const QKeyEvent* event) const;

    QElapsedTimer clock;
};
