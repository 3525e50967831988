#include "platform/macos/EventSink.h"

#include <utility>

namespace Stemhaven {

namespace {

std::atomic<std::int32_t>& systemReferences() {
    static std::atomic<std::int32_t> count = 0;
    return count;
}

EventSink* sinkOf(const void* info) {
    // The system hands its pointer back as const; it was made from a sink that is not.
    return static_cast<EventSink*>(const_cast<void*>(info)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

} // namespace

EventSink::Owner EventSink::create(FileEventStream::Handler handler) {
    return Owner(new EventSink(std::move(handler)));
}

EventSink::EventSink(FileEventStream::Handler handler) : m_handler(std::move(handler)) {}

EventSink::Owner EventSink::share() {
    ++m_owners;
    return Owner(this);
}

void EventSink::release() {
    if (--m_owners == 0)
        delete this;
}

const void* EventSink::retainForSystem(const void* info) {
    ++systemReferences();
    return sinkOf(info)->share().release();
}

void EventSink::releaseForSystem(const void* info) {
    sinkOf(info)->release();
    --systemReferences();
}

bool EventSink::anyHeldBySystem() {
    return systemReferences() > 0;
}

void EventSink::deliver(const QList<FileEvent>& events) {
    std::unique_lock lock(m_mutex);
    // The queue is a concurrent one.
    m_idle.wait(lock, [this] { return m_caller == std::thread::id(); });
    if (m_isClosed)
        return;
    m_caller = std::this_thread::get_id();
    lock.unlock();

    m_handler(events);

    lock.lock();
    m_caller = {};
    m_idle.notify_all();
}

void EventSink::close() {
    const std::lock_guard lock(m_mutex);
    m_isClosed = true;
}

void EventSink::waitUntilIdle() {
    std::unique_lock lock(m_mutex);
    m_idle.wait(
        lock, [this] { return m_caller == std::thread::id() || m_caller == std::this_thread::get_id(); });
}

} // namespace Stemhaven
