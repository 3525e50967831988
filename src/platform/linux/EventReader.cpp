#include "platform/linux/EventReader.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <system_error>

namespace Stemhaven {

EventReader::EventReader(InotifyCalls& calls, RawEventQueue& queue)
    : m_descriptor(calls),
      m_queue(queue),
      m_stop(eventfd(0, EFD_CLOEXEC)),
      m_mounts(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)) {}

void EventReader::start() {
    m_thread = std::thread([this] { run(); });
}

void EventReader::stop() {
    if (!m_thread.joinable())
        return;
    eventfd_write(m_stop, 1);
    m_thread.join();
}

EventReader::~EventReader() {
    stop();
    if (m_stop >= 0)
        close(m_stop);
    if (m_mounts >= 0)
        close(m_mounts);
}

void EventReader::run() noexcept {
    try {
        drain();
    } catch (const std::exception& error) {
        m_queue.fail(error.what());
    } catch (...) {
        m_queue.fail("unknown exception");
    }
}

void EventReader::drain() {
    // A descriptor below 0, as of a system without /proc, is passed over by poll().
    std::array<pollfd, 3> descriptors{
        {{m_stop, POLLIN, 0}, {m_descriptor.number(), POLLIN, 0}, {m_mounts, POLLPRI, 0}}};
    for (;;) {
        if (poll(descriptors.data(), descriptors.size(), -1) < 0) {
            if (errno != EINTR)
                throw std::system_error(errno, std::generic_category(), "poll");
            continue;
        }
        if (descriptors[0].revents != 0)
            return;
        if ((descriptors[1].revents & (POLLERR | POLLNVAL)) != 0)
            throw std::system_error(EBADF, std::generic_category(), "poll");
        if (descriptors[1].revents != 0)
            m_queue.push(m_descriptor.read());
        if (descriptors[2].revents != 0)
            m_queue.noteMountsChanged();
    }
}

} // namespace Stemhaven
