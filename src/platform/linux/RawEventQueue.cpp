#include "platform/linux/RawEventQueue.h"

#include <sys/inotify.h>

#include <utility>

namespace Stemhaven {

namespace {

/// Some tens of megabytes. A reader of the events that is so far behind had better look at the disk.
constexpr std::size_t capacity = 500'000;

} // namespace

void RawEventQueue::push(std::vector<RawEvent> events) {
    if (events.empty())
        return;
    {
        const std::lock_guard lock(m_mutex);
        auto& waiting = m_taken.events;
        for (auto& event : events) {
            if (waiting.empty() || waiting.back() != event)
                waiting.push_back(std::move(event));
        }
        if (waiting.size() > capacity)
            waiting = {RawEvent{-1, IN_Q_OVERFLOW, 0, {}}};
    }
    m_arrival.notify_one();
}

void RawEventQueue::noteMountsChanged() {
    {
        const std::lock_guard lock(m_mutex);
        m_taken.mountsChanged = true;
    }
    m_arrival.notify_one();
}

void RawEventQueue::fail(std::string reason) {
    {
        const std::lock_guard lock(m_mutex);
        m_taken.failure = std::move(reason);
    }
    m_arrival.notify_one();
}

void RawEventQueue::wake() {
    {
        const std::lock_guard lock(m_mutex);
        m_isWoken = true;
    }
    m_arrival.notify_one();
}

void RawEventQueue::close() {
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }
    m_arrival.notify_one();
}

RawEventQueue::Taken
RawEventQueue::wait(const std::optional<std::chrono::steady_clock::time_point>& deadline) {
    std::unique_lock lock(m_mutex);
    if (deadline)
        m_arrival.wait_until(lock, *deadline, [this] { return isReady(); });
    else
        m_arrival.wait(lock, [this] { return isReady(); });
    m_isWoken = false;
    return std::exchange(m_taken, {});
}

bool RawEventQueue::isEmpty() {
    const std::lock_guard lock(m_mutex);
    return m_taken.events.empty() && !m_taken.mountsChanged && m_taken.failure.empty();
}

void RawEventQueue::clear() {
    const std::lock_guard lock(m_mutex);
    m_taken.events.clear();
    m_taken.failure.clear();
}

bool RawEventQueue::isReady() const {
    const bool hasArrived = m_taken.mountsChanged || !m_taken.events.empty() || !m_taken.failure.empty();
    return m_isClosed || m_isWoken || hasArrived;
}

} // namespace Stemhaven
