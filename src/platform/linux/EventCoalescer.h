#pragma once

#include "platform/FileEventStream.h"
#include "platform/linux/EventClock.h"
#include "platform/linux/EventTrace.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Stemhaven {

/// Gathers events into batches: what happens to one file at one path within the latency becomes one event.
///
/// The first batch after a quiet time is due soon, the following ones a latency after the one before.
class EventCoalescer {
public:
    using Clock = std::chrono::steady_clock;

    /// What is added is noted in the trace, if there is one.
    EventCoalescer(EventClock& eventClock, std::chrono::milliseconds latency, EventTrace* trace = nullptr);

    /// A folder is known by its inode, so that a folder moved away and another made in its place stay two. A
    /// fileID of 0 stands for whatever file is at path.
    void add(const std::string& path, std::uint64_t fileID, std::uint32_t flags);

    /// The folder with this inode was moved: what is waiting to be told about it or about something below
    /// holds at its new path as well, since nothing is found at the old one any more.
    void carry(const std::string& from, const std::string& to, std::uint64_t fileID);

    /// Nothing while nothing is waiting.
    std::optional<Clock::time_point> due() const;

    /// What is waiting, in the order of the ids. Begins a new batch.
    QList<FileEvent> take();

private:
    struct Waiting {
        std::uint32_t flags = 0;
        std::uint64_t eventID = 0;
    };

    using Key = std::pair<std::string, std::uint64_t>;

    EventClock& m_eventClock;
    std::chrono::milliseconds m_latency;
    EventTrace* m_trace;
    std::map<Key, Waiting> m_waiting;
    Clock::time_point m_firstWaiting;
    std::optional<Clock::time_point> m_lastTaken;
};

} // namespace Stemhaven
