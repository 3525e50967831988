#pragma once

#include "plist/Value.h"

#include <cstdint>

namespace Plist {

/// How deep dictionaries and arrays may nest, so that no list, read or written, can exhaust the stack.
constexpr int maxDepth = 512;

/// To be called with the number of containers around the one that is being entered.
inline void checkDepth(int depth) {
    if (depth >= maxDepth)
        throw Error("Plist: nested too deeply");
}

/// What a list may unfold into. Its objects may be shared, so a small list can stand for a huge tree: values
/// and the bytes of texts and data are counted apart, each against an allowance in proportion to the list's
/// size. A list that shares nothing always fits.
class Allowance {
public:
    explicit Allowance(std::uint64_t listSize)
        : m_values((16U << 20U) + 16 * listSize),
          m_bytes((20U << 20U) + 2 * listSize) {}

    /// Throw Error where the list is not allowed that many more.
    void takeElements(std::uint64_t count) { take(m_values, count * sizeof(Value)); }

    void takeEntries(std::uint64_t count) { take(m_values, count * memoryOfEntry); }

    /// A value that does not fit into its place in a container.
    void takeHeldApart() { take(m_values, memoryHeldApart); }

    void takeBytes(std::uint64_t count) { take(m_bytes, count); }

private:
    // About what the standard library allocates, with the allocator's own bytes.
    static constexpr std::uint64_t memoryOfEntry = 112;
    static constexpr std::uint64_t memoryHeldApart = 64;

    static void take(std::uint64_t& allowance, std::uint64_t amount) {
        if (amount > allowance)
            throw Error("Plist: unfolds to more than its size allows");
        allowance -= amount;
    }

    std::uint64_t m_values; ///< in bytes of memory
    std::uint64_t m_bytes;
};

} // namespace Plist
