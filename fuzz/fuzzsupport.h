#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What every fuzz target shares: the application object, a settings store and
// a folder "beside the program" of their own, and the check that ends the run
// when an invariant breaks.

// A rule the code under test must keep for every input. A broken one aborts,
// which libFuzzer records as a finding and the corpus run as a failed test.
#define FUZZ_REQUIRE(condition)                                                                    \
    do {                                                                                           \
        if (!(condition))                                                                          \
            FuzzSupport::fail(#condition, __FILE__, __LINE__);                                     \
    } while (false)

namespace FuzzSupport {

[[noreturn]] void fail(const char* condition, const char* file, int line);

// Makes the QApplication (offscreen, no log output) and points the settings
// store and the program's folder at a temporary folder. Idempotent.
void setUp();

// The temporary folder that stands for the program's own.
QString workDir();

QByteArray bytes(const uint8_t* data, size_t size);

// Reply bytes read as the program reads every service answer: UTF-8 up to the first NUL.
QString replyText(const QByteArray& body);

} // namespace FuzzSupport
