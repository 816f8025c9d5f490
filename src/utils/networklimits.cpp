#include "networklimits.h"

#include <atomic>

namespace {

// Statistics workers start requests on their own threads.
std::atomic<int> timeout { 30000 };

} // namespace

namespace NetworkLimits {

int transferTimeout()
{
    return timeout.load();
}

void setTransferTimeout(int milliseconds)
{
    timeout.store(milliseconds);
}

} // namespace NetworkLimits
