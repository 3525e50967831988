#include "platform/linux/PendingMoves.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

void PendingMoves::begin(std::uint32_t cookie, OldHalf half) {
    m_halves[cookie] = {std::move(half), Clock::now() + patience};
}

std::optional<PendingMoves::OldHalf> PendingMoves::complete(std::uint32_t cookie) {
    auto node = m_halves.extract(cookie);
    if (node.empty())
        return std::nullopt;
    return std::move(node.mapped().half);
}

void PendingMoves::forgetExpired() {
    std::erase_if(m_halves, [now = Clock::now()](const auto& half) { return half.second.expiry <= now; });
}

bool PendingMoves::isPending(std::uint64_t fileID) const {
    return std::any_of(m_halves.begin(), m_halves.end(), [fileID](const auto& half) {
        return half.second.half.fileID == fileID;
    });
}

std::optional<PendingMoves::Clock::time_point> PendingMoves::nextExpiry() const {
    std::optional<Clock::time_point> next;
    for (const auto& [cookie, pending] : m_halves)
        next = next ? std::min(*next, pending.expiry) : pending.expiry;
    return next;
}

} // namespace Stemhaven
