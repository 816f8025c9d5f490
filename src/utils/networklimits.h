#pragma once

// Limits that every request of the program keeps, so that no owner waits for
// ever on a silent server or a redirect loop.
namespace NetworkLimits {

constexpr int maxRedirects = 10;

// Inactivity time-out of a transfer in milliseconds, 30000 unless a test
// shortens it.
int transferTimeout();
void setTransferTimeout(int milliseconds);

} // namespace NetworkLimits
