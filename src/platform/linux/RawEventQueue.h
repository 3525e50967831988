#pragma once

#include "platform/linux/InotifyDescriptor.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Stemhaven {

/// Between the thread that drains the descriptor and the one that decides what the events mean.
class RawEventQueue {
public:
    struct Taken {
        std::vector<RawEvent> events;
        bool mountsChanged = false;
        /// Why there will be no more events, if so.
        std::string failure;
    };

    void push(std::vector<RawEvent> events);
    void noteMountsChanged();
    /// Nobody drains the descriptor any more.
    void fail(std::string reason);
    /// wait() returns for something else that is to be done.
    void wake();

    /// wait() returns at once from now on.
    void close();

    /// Waits for something to arrive, for the deadline, or, without one, as long as it takes.
    Taken wait(const std::optional<std::chrono::steady_clock::time_point>& deadline);

    bool isEmpty();

    /// Forgets the events and the failure of a descriptor that is gone.
    void clear();

private:
    bool isReady() const;

    std::mutex m_mutex;
    std::condition_variable m_arrival;
    Taken m_taken;
    bool m_isWoken = false;
    bool m_isClosed = false;
};

} // namespace Stemhaven
