#include "demorandom.h"

DemoRandom::DemoRandom(std::uint64_t seed)
    : state(seed)
{
}

// SplitMix64: tiny, well mixed and fully specified.
std::uint64_t DemoRandom::next()
{
    state += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

int DemoRandom::bounded(int bound)
{
    if (bound < 1)
        return 0;
    return static_cast<int>(next() % static_cast<std::uint64_t>(bound));
}

int DemoRandom::between(int low, int high)
{
    return low + bounded(high - low + 1);
}

bool DemoRandom::chance(int percent)
{
    return bounded(100) < percent;
}
