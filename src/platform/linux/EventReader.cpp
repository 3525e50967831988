#include "platform/linux/EventReader.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace Stemhaven {

EventReader::EventReader(InotifyCalls& calls, RawEventQueue& queue)
    : m_descriptor(calls),
      m_queue(queue),
      m_stop(eventfd(0, EFD_CLOEXEC)),
      m_mounts(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor.isOpen() && m_stop >= 0)
        m_thread = std::thread([this] { drain(); });
}

EventReader::~EventReader() {
    if (m_thread.joinable()) {
        eventfd_write(m_stop, 1);
        m_thread.join();
    }
    if (m_stop >= 0)
        close(m_stop);
    if (m_mounts >= 0)
        close(m_mounts);
}

void EventReader::drain() {
    // A descriptor below 0, as of a system without /proc, is passed over by poll().
    std::array<pollfd, 3> descriptors{
        {{m_stop, POLLIN, 0}, {m_descriptor.number(), POLLIN, 0}, {m_mounts, POLLPRI, 0}}};
    for (;;) {
        if (poll(descriptors.data(), descriptors.size(), -1) < 0) {
            if (errno != EINTR)
                return;
            continue;
        }
        if (descriptors[0].revents != 0)
            return;
        if (descriptors[1].revents != 0)
            m_queue.push(m_descriptor.read());
        if (descriptors[2].revents != 0)
            m_queue.noteMountsChanged();
    }
}

} // namespace Stemhaven
