#include "platform/linux/InotifyCalls.h"

#include <sys/inotify.h>
#include <unistd.h>

namespace Stemhaven {

InotifyCalls& InotifyCalls::system() {
    // Never destroyed: a thread that a file system holds up may call it to the very end of the process.
    static auto* const calls = new InotifyCalls;
    return *calls;
}

int InotifyCalls::open() {
    return inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
}

int InotifyCalls::addWatch(int descriptor, const char* path, std::uint32_t mask) {
    return inotify_add_watch(descriptor, path, mask);
}

int InotifyCalls::removeWatch(int descriptor, int watch) {
    return inotify_rm_watch(descriptor, watch);
}

ssize_t InotifyCalls::read(int descriptor, void* buffer, std::size_t size) {
    return ::read(descriptor, buffer, size);
}

bool InotifyCalls::tellsEvents(const std::string& path, const MountTable& mounts) {
    return !mounts.find(path).isRemote;
}

} // namespace Stemhaven
