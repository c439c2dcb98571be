#pragma once

#include <cstdint>
#include <span>

namespace dbsetup {

// Deterministic pseudo-random numbers (splitmix64): the same seed gives the same demo data on
// every machine and standard library, unlike the distributions of <random>.
class DemoRandom
{
public:
    explicit DemoRandom(std::uint64_t seed)
        : m_state(seed)
    { }

    std::uint64_t next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // A number in [low, high], both included.
    int between(int low, int high)
    {
        if (high <= low)
            return low;
        return low + int(next() % std::uint64_t(high - low + 1));
    }

    bool chance(int percent) { return between(1, 100) <= percent; }

    template<typename T>
    const T &pick(std::span<const T> items)
    {
        return items[std::size_t(between(0, int(items.size()) - 1))];
    }

private:
    std::uint64_t m_state;
};

} // namespace dbsetup
