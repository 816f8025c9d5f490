#pragma once

#include <QString>

// Windows virtual-key codes and key names, which the keyboard reader speaks on
// every platform. Sources that don't get them from the system translate into them.
namespace VirtualKey {

// The code of the key that types `character` on a US or Polish keyboard:
// digits 0x30-0x39, letters 0x41-0x5A in either case, the space bar and the
// punctuation keys with their shifted signs. 0 for anything else.
int fromCharacter(uint character);

// The name Windows gives the key (GetKeyNameText on a US or Polish layout):
// "Ctrl", "Right Ctrl", "Enter", "Esc", "A", "1", "F1", "Num 1", "Page Up"...
// An empty string for a code without a key.
QString name(int vkCode);

} // namespace VirtualKey
