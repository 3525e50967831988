#pragma once

#include "platform/FileEventStream.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace Stemhaven {

/// What the system's callback reaches: the handler, and whether it may still be called.
///
/// Shared between the stream and the system, which can keep it for a while after the stream is gone. Safe
/// from any thread.
class EventSink {
public:
    struct Releaser {
        void operator()(EventSink* sink) const { sink->release(); }
    };

    using Owner = std::unique_ptr<EventSink, Releaser>;

    static Owner create(FileEventStream::Handler handler);

    EventSink(const EventSink&) = delete;
    EventSink& operator=(const EventSink&) = delete;

    Owner share();

    /// The two functions of a stream's context; info is the sink.
    static const void* retainForSystem(const void* info);
    static void releaseForSystem(const void* info);

    /// Whether the system holds any sink of this process.
    static bool anyHeldBySystem();

    /// Calls the handler, one call at a time, unless the sink is closed. No lock is held meanwhile.
    void deliver(const QList<FileEvent>& events);

    /// No call of the handler begins after it.
    void close();
    /// Waits for the call that is under way, unless it is the caller's own.
    void waitUntilIdle();

private:
    explicit EventSink(FileEventStream::Handler handler);
    ~EventSink() = default;
    void release();

    std::atomic<int> m_owners = 1;
    FileEventStream::Handler m_handler;
    std::mutex m_mutex;
    std::condition_variable m_idle;
    bool m_isClosed = false;
    /// The thread that is in the handler; none where nobody is.
    std::thread::id m_caller;
};

} // namespace Stemhaven
