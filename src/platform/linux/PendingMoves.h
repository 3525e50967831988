#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace Stemhaven {

/// Old halves of moves whose new half has not come yet. When it does not come soon, it will not: the folder
/// has left what is watched.
class PendingMoves {
public:
    using Clock = std::chrono::steady_clock;

    /// The system queues both halves in one go, but may be interrupted between them.
    static constexpr std::chrono::milliseconds patience{100};

    struct OldHalf {
        std::string path;
        std::uint64_t fileID = 0;
        /// -1 for what was not watched.
        int watch = -1;
        /// Of projects that lie below no root.
        bool isAncestor = false;
    };

    void begin(std::uint32_t cookie, OldHalf half);
    std::optional<OldHalf> complete(std::uint32_t cookie);

    void forgetExpired();

    /// Whether the new half of this folder's move is being waited for.
    bool isPending(std::uint64_t fileID) const;

    /// When the oldest expires; nothing when there is none.
    std::optional<Clock::time_point> nextExpiry() const;

    void clear() { m_halves.clear(); }

private:
    struct Pending {
        OldHalf half;
        Clock::time_point expiry;
    };

    std::map<std::uint32_t, Pending> m_halves;
};

} // namespace Stemhaven
