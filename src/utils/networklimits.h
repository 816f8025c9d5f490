#pragma once

#include <QtGlobal>

// Limits that every request of the program keeps, so that no owner waits for
// ever on a silent server or a redirect loop.
namespace NetworkLimits {

constexpr int maxRedirects = 10;

// No answer of the services comes near this (the zipped drug base is the
// largest); a body that says or turns out larger is cut off, not kept in memory.
constexpr qint64 maxBodySize = qint64(1) << 30;

// Inactivity time-out of a transfer in milliseconds, 30000 unless a test
// shortens it.
int transferTimeout();
void setTransferTimeout(int milliseconds);

} // namespace NetworkLimits
