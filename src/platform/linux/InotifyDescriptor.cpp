#include "platform/linux/InotifyDescriptor.h"

#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <system_error>

namespace Stemhaven {

namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

void appendParsed(const char* bytes, std::size_t size, std::vector<RawEvent>& events) {
    while (size >= sizeof(inotify_event)) {
        inotify_event header = {};
        std::memcpy(&header, bytes, sizeof header);
        const std::size_t length = sizeof header + header.len;
        if (length > size)
            return;
        const char* name = bytes + sizeof header;
        // The name is padded with zeros.
        events.push_back(
            {header.wd, header.mask, header.cookie, std::string(name, strnlen(name, header.len))});
        bytes += length;
        size -= length;
    }
}

} // namespace

InotifyDescriptor::InotifyDescriptor(InotifyCalls& calls)
    : m_calls(calls),
      m_descriptor(calls.open()),
      m_buffer(bufferSize) {}

InotifyDescriptor::~InotifyDescriptor() {
    if (isOpen())
        close(m_descriptor);
}

int InotifyDescriptor::add(const std::string& path, std::uint32_t mask) {
    return m_calls.addWatch(m_descriptor, path.c_str(), mask);
}

void InotifyDescriptor::remove(int watch) {
    m_calls.removeWatch(m_descriptor, watch);
}

bool InotifyDescriptor::hasUnread() const {
    int bytes = 0;
    return ioctl(m_descriptor, FIONREAD, &bytes) != 0 || bytes > 0;
}

std::vector<RawEvent> InotifyDescriptor::read() {
    std::vector<RawEvent> events;
    for (;;) {
        const ssize_t size = m_calls.read(m_descriptor, m_buffer.data(), m_buffer.size());
        if (size > 0)
            appendParsed(m_buffer.data(), static_cast<std::size_t>(size), events);
        else if (size < 0 && errno != EINTR && errno != EAGAIN)
            throw std::system_error(errno, std::generic_category(), "read");
        else if (size == 0 || errno == EAGAIN)
            return events;
        if (size > 0 && static_cast<std::size_t>(size) < m_buffer.size() / 2)
            return events;
    }
}

} // namespace Stemhaven
