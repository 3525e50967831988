#pragma once

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <string>
#include <utility>

/// A mount of which nobody serves the requests: whoever looks into it waits until this is destroyed.
class DeadMount {
public:
    explicit DeadMount(std::string point)
        : m_point(std::move(point)),
          m_device(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
        const auto options = "fd=" + std::to_string(m_device) + ",rootmode=40000,user_id=0,group_id=0";
        m_isMounted = m_device >= 0 && mount("dead", m_point.c_str(), "fuse", 0, options.c_str()) == 0;
    }

    ~DeadMount() {
        if (m_device >= 0)
            close(m_device);
        if (m_isMounted)
            umount2(m_point.c_str(), MNT_DETACH);
    }

    DeadMount(const DeadMount&) = delete;
    DeadMount& operator=(const DeadMount&) = delete;

    bool isMounted() const { return m_isMounted; }

private:
    std::string m_point;
    int m_device;
    bool m_isMounted = false;
};
