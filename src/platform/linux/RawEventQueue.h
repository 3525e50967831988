#pragma once

#include "platform/linux/InotifyDescriptor.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <vector>

namespace Stemhaven {

/// Between the thread that drains the descriptor and the one that decides what the events mean.
class RawEventQueue {
public:
    struct Taken {
        std::vector<RawEvent> events;
        bool mountsChanged = false;
    };

    void push(std::vector<RawEvent> events);
    void noteMountsChanged();

    /// wait() returns at once from now on.
    void close();

    /// Waits for something to arrive, for the deadline, or, without one, as long as it takes.
    Taken wait(const std::optional<std::chrono::steady_clock::time_point>& deadline);

    /// Forgets the events, which came from a descriptor that is gone.
    void clear();

private:
    bool isReady() const { return m_isClosed || m_taken.mountsChanged || !m_taken.events.empty(); }

    std::mutex m_mutex;
    std::condition_variable m_arrival;
    Taken m_taken;
    bool m_isClosed = false;
};

} // namespace Stemhaven
