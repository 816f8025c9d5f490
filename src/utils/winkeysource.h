#pragma once

#include "keysource.h"

// The whole Windows session's key stream through a low-level keyboard hook
// (WH_KEYBOARD_LL). The hook procedure runs on the thread that installed it,
// the main thread, and passes every key on to the next hook.
class WinKeySource : public KeySource
{
    Q_OBJECT
    Q_DISABLE_COPY(WinKeySource)

public:
    explicit WinKeySource(QObject* parent = nullptr);
    ~WinKeySource() override;

    static bool isSupported() { return true; }

    void installHook();
    void removeHook();

    // Called by the hook procedure for each key event.
    void handleKey(bool press, int vkCode, qint64 timeMs);

private:
    void* hook = nullptr; // HHOOK
};
