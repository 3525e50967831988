#pragma once

#include <cstdint>
#include <random>

namespace DemoLibrary {

/// A stream of choices, the same for the same seed with every standard library (whose distributions differ).
class Random {
public:
    explicit Random(std::uint64_t seed) : m_engine(seed) {}

    std::uint64_t next() { return m_engine(); }

    /// Both bounds included.
    int between(int low, int high) {
        const auto span = static_cast<std::uint64_t>(high - low) + 1;
        return low + static_cast<int>(next() % span);
    }

    bool chance(int percent) { return between(1, 100) <= percent; }

    template <typename List>
    const auto& pick(const List& list) {
        return list[static_cast<std::size_t>(next() % std::size(list))];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace DemoLibrary
