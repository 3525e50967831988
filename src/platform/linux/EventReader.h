#pragma once

#include "platform/linux/InotifyDescriptor.h"
#include "platform/linux/RawEventQueue.h"

#include <thread>

namespace Stemhaven {

/// A descriptor and the thread that does nothing but drain it, so that a slow consumer does not make the
/// system's queue overflow. Sleeps while nothing happens.
///
/// It also notices that something was mounted or unmounted, which inotify tells only in part. When the
/// descriptor can no longer be read, the queue is told.
class EventReader {
public:
    EventReader(InotifyCalls& calls, RawEventQueue& queue);
    ~EventReader();
    EventReader(const EventReader&) = delete;
    EventReader& operator=(const EventReader&) = delete;

    /// False when the system has no descriptor to give.
    bool isOpen() const { return m_descriptor.isOpen() && m_stop >= 0; }

    void start();
    /// Waits for the thread's end. The descriptor stays open.
    void stop();

    InotifyDescriptor& descriptor() { return m_descriptor; }

private:
    void run() noexcept;
    void drain();

    InotifyDescriptor m_descriptor;
    RawEventQueue& m_queue;
    int m_stop;
    int m_mounts;
    std::thread m_thread;
};

} // namespace Stemhaven
