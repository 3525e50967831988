#include "platform/linux/PendingMoves.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

using namespace std::chrono_literals;

namespace {

/// The system queues both halves in one go, but may be interrupted between them.
constexpr auto patience = 100ms;

} // namespace

void PendingMoves::begin(std::uint32_t cookie, OldHalf half) {
    m_halves[cookie] = {std::move(half), Clock::now() + patience};
}

std::optional<PendingMoves::OldHalf> PendingMoves::complete(std::uint32_t cookie) {
    auto node = m_halves.extract(cookie);
    if (node.empty())
        return std::nullopt;
    return std::move(node.mapped().half);
}

std::vector<PendingMoves::OldHalf> PendingMoves::takeExpired(Clock::time_point now) {
    std::vector<OldHalf> expired;
    for (auto it = m_halves.begin(); it != m_halves.end();) {
        if (it->second.expiry > now) {
            ++it;
            continue;
        }
        expired.push_back(std::move(it->second.half));
        it = m_halves.erase(it);
    }
    return expired;
}

std::optional<PendingMoves::Clock::time_point> PendingMoves::nextExpiry() const {
    std::optional<Clock::time_point> next;
    for (const auto& [cookie, pending] : m_halves)
        next = next ? std::min(*next, pending.expiry) : pending.expiry;
    return next;
}

} // namespace Stemhaven
