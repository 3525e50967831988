#include "platform/linux/EventClock.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Stemhaven {

EventClock::EventClock(WallClock wallClock) : m_wallClock(std::move(wallClock)) {}

EventClock& EventClock::instance() {
    static EventClock clock;
    return clock;
}

std::uint64_t EventClock::systemTime() {
    using namespace std::chrono;
    const auto sinceEpoch = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
    return sinceEpoch > 0 ? static_cast<std::uint64_t>(sinceEpoch) : 0;
}

std::uint64_t EventClock::next() {
    const std::lock_guard lock(m_mutex);
    m_last = std::max(m_last + 1, m_wallClock());
    return m_last;
}

void EventClock::passBeyond(std::uint64_t eventID) {
    const std::lock_guard lock(m_mutex);
    m_last = std::max(m_last, eventID);
}

} // namespace Stemhaven
