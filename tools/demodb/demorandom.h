#pragma once

#include <QStringList>

#include <cstdint>

// A small random generator whose sequence depends only on the seed, on every
// platform and standard library, so that one seed always gives one database.
class DemoRandom {
public:
    explicit DemoRandom(std::uint64_t seed);

    std::uint64_t next();
    // A number in [0, bound); 0 for a bound below 1.
    int bounded(int bound);
    // A number in [low, high].
    int between(int low, int high);
    // True in `percent` cases out of a hundred.
    bool chance(int percent);

    template <typename T>
    const T& pick(const QList<T>& list)
    {
        return list.at(bounded(list.size()));
    }

private:
    std::uint64_t state;
};
