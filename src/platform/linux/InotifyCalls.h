#pragma once

#include "platform/linux/MountTable.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace Stemhaven {

/// The calls of the system that can refuse: a test derives from it to have them fail.
class InotifyCalls {
public:
    static InotifyCalls& system();

    InotifyCalls() = default;
    virtual ~InotifyCalls() = default;
    InotifyCalls(const InotifyCalls&) = delete;
    InotifyCalls& operator=(const InotifyCalls&) = delete;

    /// These return -1 and set errno, as the system does.
    virtual int open();
    virtual int addWatch(int descriptor, const char* path, std::uint32_t mask);
    virtual int removeWatch(int descriptor, int watch);
    virtual ssize_t read(int descriptor, void* buffer, std::size_t size);

    /// Whether changes that others make to the file system at path are told here: not those that come over a
    /// network or from another process. Does not ask that file system itself, which may not answer.
    virtual bool tellsEvents(const std::string& path, const MountTable& mounts);
};

} // namespace Stemhaven
