#include "virtualkey.h"

#include <QHash>

namespace VirtualKey {

namespace {

struct CharacterKey
{
    char character;
    int vkCode;
};

// The punctuation keys of the US layout, plain and shifted; the Polish
// programmer's layout, the one in use here, has the same.
constexpr CharacterKey punctuation[] = {
    {' ', 0x20},
    {')', 0x30}, {'!', 0x31}, {'@', 0x32}, {'#', 0x33}, {'$', 0x34},
    {'%', 0x35}, {'^', 0x36}, {'&', 0x37}, {'*', 0x38}, {'(', 0x39},
    {';', 0xBA}, {':', 0xBA}, {'=', 0xBB}, {'+', 0xBB}, {',', 0xBC}, {'<', 0xBC},
    {'-', 0xBD}, {'_', 0xBD}, {'.', 0xBE}, {'>', 0xBE}, {'/', 0xBF}, {'?', 0xBF},
    {'`', 0xC0}, {'~', 0xC0}, {'[', 0xDB}, {'{', 0xDB}, {'\\', 0xDC}, {'|', 0xDC},
    {']', 0xDD}, {'}', 0xDD}, {'\'', 0xDE}, {'"', 0xDE},
};

QHash<int, QString> makeNames()
{
    QHash<int, QString> names{
        {0x08, QStringLiteral("Backspace")},
        {0x09, QStringLiteral("Tab")},
        {0x0D, QStringLiteral("Enter")},
        {0x10, QStringLiteral("Shift")},
        {0x11, QStringLiteral("Ctrl")},
        {0x12, QStringLiteral("Alt")},
        {0x13, QStringLiteral("Pause")},
        {0x14, QStringLiteral("Caps Lock")},
        {0x1B, QStringLiteral("Esc")},
        {0x20, QStringLiteral("Space")},
        {0x21, QStringLiteral("Page Up")},
        {0x22, QStringLiteral("Page Down")},
        {0x23, QStringLiteral("End")},
        {0x24, QStringLiteral("Home")},
        {0x25, QStringLiteral("Left")},
        {0x26, QStringLiteral("Up")},
        {0x27, QStringLiteral("Right")},
        {0x28, QStringLiteral("Down")},
        // Print Screen shares its scan code with SysRq, whose name Windows gives.
        {0x2C, QStringLiteral("Sys Req")},
        {0x2D, QStringLiteral("Insert")},
        {0x2E, QStringLiteral("Delete")},
        {0x5B, QStringLiteral("Left Windows")},
        {0x5C, QStringLiteral("Right Windows")},
        {0x5D, QStringLiteral("Application")},
        {0x6A, QStringLiteral("Num *")},
        {0x6B, QStringLiteral("Num +")},
        {0x6D, QStringLiteral("Num -")},
        {0x6E, QStringLiteral("Num Del")},
        {0x6F, QStringLiteral("Num /")},
        {0x90, QStringLiteral("Num Lock")},
        {0x91, QStringLiteral("Scroll Lock")},
        {0xA0, QStringLiteral("Shift")},
        {0xA1, QStringLiteral("Right Shift")},
        {0xA2, QStringLiteral("Ctrl")},
        {0xA3, QStringLiteral("Right Ctrl")},
        {0xA4, QStringLiteral("Alt")},
        {0xA5, QStringLiteral("Right Alt")},
        {0xBA, QStringLiteral(";")},
        {0xBB, QStringLiteral("=")},
        {0xBC, QStringLiteral(",")},
        {0xBD, QStringLiteral("-")},
        {0xBE, QStringLiteral(".")},
        {0xBF, QStringLiteral("/")},
        {0xC0, QStringLiteral("`")},
        {0xDB, QStringLiteral("[")},
        {0xDC, QStringLiteral("\\")},
        {0xDD, QStringLiteral("]")},
        {0xDE, QStringLiteral("'")},
    };
    for (int digit = 0; digit <= 9; ++digit) {
        names.insert(0x30 + digit, QString::number(digit));
        names.insert(0x60 + digit, QStringLiteral("Num ") + QString::number(digit));
    }
    for (int letter = 0; letter < 26; ++letter)
        names.insert(0x41 + letter, QString(QChar('A' + letter)));
    for (int function = 1; function <= 24; ++function)
        names.insert(0x6F + function, QStringLiteral("F") + QString::number(function));
    return names;
}

} // namespace

int fromCharacter(uint character)
{
    if (character >= '0' && character <= '9')
        return int(character);
    if (character >= 'A' && character <= 'Z')
        return int(character);
    if (character >= 'a' && character <= 'z')
        return int(character - 'a' + 'A');
    for (const CharacterKey& key : punctuation) {
        if (uint(uchar(key.character)) == character)
            return key.vkCode;
    }
    return 0;
}

QString name(int vkCode)
{
    static const QHash<int, QString> names = makeNames();
    return names.value(vkCode);
}

} // namespace VirtualKey
