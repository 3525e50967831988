#pragma once

#include <cstdint>
#include <functional>
#include <mutex>

namespace Stemhaven {

/// Gives events their ids: nanoseconds since 1970, so that an id is also a moment to replay from.
///
/// Ids only grow, also when the system's clock is set back. Safe from any thread.
class EventClock {
public:
    using WallClock = std::function<std::uint64_t()>;

    explicit EventClock(WallClock wallClock = systemTime);

    /// The one that all streams of the process share.
    static EventClock& instance();

    /// Nanoseconds since 1970 after the system's clock.
    static std::uint64_t systemTime();

    std::uint64_t next();

    /// Later ids are greater than this one.
    void passBeyond(std::uint64_t eventID);

    std::uint64_t wallTime() const { return m_wallClock(); }

private:
    WallClock m_wallClock;
    std::mutex m_mutex;
    std::uint64_t m_last = 0;
};

} // namespace Stemhaven
