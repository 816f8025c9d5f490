#include "winkeysource.h"

#include <QDebug>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

namespace {

WinKeySource* currentSource = nullptr;

// Keys whose scan codes Windows reports with the extended bit; without it
// GetKeyNameText names the keypad's twin ("Num 7" for Home).
bool isExtendedKey(DWORD vkCode)
{
    return (vkCode >= 0x21 && vkCode <= 0x28) || vkCode == 0x2D || vkCode == 0x2E
        || (vkCode >= 0x5B && vkCode <= 0x5D) || vkCode == 0x6F || vkCode == 0x90 || vkCode == 0xA3
        || vkCode == 0xA5;
}

QString keyName(DWORD vkCode)
{
    UINT scanCode = MapVirtualKeyW(vkCode, 0);
    if (isExtendedKey(vkCode))
        scanCode |= 0x100;
    char name[128] = {};
    const int length = GetKeyNameTextA(LONG(scanCode << 16), name, int(sizeof name));
    return QString::fromLatin1(name, length > 0 ? length : 0);
}

LRESULT CALLBACK lowLevelKeyboardProc(int code, WPARAM message, LPARAM data)
{
    if (code < 0 || !currentSource)
        return CallNextHookEx(nullptr, code, message, data);

    const auto* event = reinterpret_cast<const KBDLLHOOKSTRUCT*>(data);
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        currentSource->handleKey(true, int(event->vkCode), qint64(event->time));
        break;
    case WM_KEYUP:
    case WM_SYSKEYUP:
        currentSource->handleKey(false, int(event->vkCode), qint64(event->time));
        break;
    default:
        break;
    }

    // Windows drops a low-level hook that it finds slow, and later hooks run
    // first: installing it anew at every event keeps ours alive and on top.
    if (currentSource) {
        currentSource->removeHook();
        currentSource->installHook();
    }
    return CallNextHookEx(nullptr, code, message, data);
}

} // namespace

WinKeySource::WinKeySource(QObject* parent)
    : KeySource(parent)
{
    currentSource = this;
    installHook();
}

WinKeySource::~WinKeySource()
{
    removeHook();
    if (currentSource == this)
        currentSource = nullptr;
}

void WinKeySource::installHook()
{
    hook = SetWindowsHookExW(WH_KEYBOARD_LL, lowLevelKeyboardProc, GetModuleHandleW(nullptr), 0);
}

void WinKeySource::removeHook()
{
    if (hook)
        UnhookWindowsHookEx(static_cast<HHOOK>(hook));
    hook = nullptr;
}

void WinKeySource::handleKey(bool press, int vkCode, qint64 timeMs)
{
    if (press)
        emit keyPressed(vkCode, timeMs);
    else
        emit keyReleased(vkCode, timeMs, keyName(DWORD(vkCode)));
}
