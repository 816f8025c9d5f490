// Any stream of key-down and key-up events, with any times, as the platform's
// key source hands them to the barcode reader.

#include "fuzzsupport.h"

#include "utils/keyboardreader.h"
#include "utils/virtualkey.h"

#include <QVector>

namespace {

constexpr int maxGap = 100;
constexpr int eanLength = 13;

struct Observed {
    QStringList readings;
    int shortcuts = 0;
    int escapes = 0;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

// Each event is three bytes: key down or up (low bit of the first), the
// virtual-key code, and the milliseconds since the last event as a signed
// byte times a scale picked by the first byte, so that both bursts and pauses
// (and a clock that jumps back) occur.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    KeyboardReader reader;
    Observed seen;
    QObject context;
    QObject::connect(&reader, &KeyboardReader::newReading, &context, [&](const QString& value) { seen.readings << value; });
    QObject::connect(&reader, &KeyboardReader::shortcut, &context, [&](const QKeySequence&) { ++seen.shortcuts; });
    QObject::connect(&reader, &KeyboardReader::escape, &context, [&] { ++seen.escapes; });

    qint64 time = 1000000;
    qint64 lastDown = 0;
    bool anyDown = false;
    // The digit keys pressed since the last pause longer than the limit.
    QString burst;
    int ups = 0;
    int escapes = 0;
    for (size_t i = 0; i + 3 <= size; i += 3) {
        const bool down = (data[i] & 1) == 0;
        const int vkCode = data[i + 1];
        const int scale = (data[i] >> 1) % 4 == 3 ? 1000 : 1;
        time += qint64(int8_t(data[i + 2])) * scale;

        const int before = seen.readings.size();
        if (down) {
            if (anyDown && time - lastDown > maxGap)
                burst.clear();
            lastDown = time;
            anyDown = true;
            if (vkCode >= '0' && vkCode <= '9')
                burst += QChar(vkCode);
            if (vkCode == 0x1B)
                ++escapes;
            reader.keyDown(vkCode, time);
        } else {
            ++ups;
            reader.keyUp(vkCode, time, VirtualKey::name(vkCode));
        }

        // A reading comes only at the press of a digit or of Return, one at a time.
        FUZZ_REQUIRE(seen.readings.size() - before <= 1);
        if (seen.readings.size() > before) {
            FUZZ_REQUIRE(down && ((vkCode >= '0' && vkCode <= '9') || vkCode == 0x0D));
            const QString reading = seen.readings.last();
            // Thirteen digits, every one pressed in this burst, in the order pressed.
            FUZZ_REQUIRE(reading.size() == eanLength);
            for (const QChar c : reading)
                FUZZ_REQUIRE(c >= QLatin1Char('0') && c <= QLatin1Char('9'));
            int from = 0;
            for (const QChar c : reading) {
                from = burst.indexOf(c, from);
                FUZZ_REQUIRE(from >= 0);
                ++from;
            }
        }
        // Every released key is a shortcut to the dispatcher, every Escape pressed a close of the box.
        FUZZ_REQUIRE(seen.shortcuts == ups);
        FUZZ_REQUIRE(seen.escapes == escapes);
    }
    return 0;
}
