#pragma once

#include "platform/linux/InotifyCalls.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Stemhaven {

/// What the system tells, unchanged.
struct RawEvent {
    int watch = -1;
    std::uint32_t mask = 0;
    std::uint32_t cookie = 0;
    std::string name;

    bool operator==(const RawEvent&) const = default;
};

/// Owns an inotify instance. Watches may be added and removed while another thread reads.
class InotifyDescriptor {
public:
    explicit InotifyDescriptor(InotifyCalls& calls);
    ~InotifyDescriptor();
    InotifyDescriptor(const InotifyDescriptor&) = delete;
    InotifyDescriptor& operator=(const InotifyDescriptor&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    int number() const { return m_descriptor; }

    /// The watch, or -1 with errno set.
    int add(const std::string& path, std::uint32_t mask);
    void remove(int watch);

    /// Whether anything can be read now. True where that is not known.
    bool hasUnread() const;

    /// What can be read now, without waiting. Throws std::system_error when it cannot be read any more.
    std::vector<RawEvent> read();

private:
    InotifyCalls& m_calls;
    int m_descriptor;
    std::vector<char> m_buffer;
};

} // namespace Stemhaven
