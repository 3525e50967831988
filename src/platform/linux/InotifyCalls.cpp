#include "platform/linux/InotifyCalls.h"

#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <linux/magic.h>

namespace Stemhaven {

namespace {

/// Those that the system's header does not name.
constexpr std::uint32_t cifsMagic = 0xFF534D42;
constexpr std::uint32_t smb2Magic = 0xFE534D42;
constexpr std::uint32_t fuseMagic = 0x65735546;
constexpr std::uint32_t cephMagic = 0x00C36400;

constexpr std::array<std::uint32_t, 8> silentFileSystems{NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, cifsMagic,
                                                         smb2Magic,       fuseMagic,       V9FS_MAGIC,
                                                         AFS_SUPER_MAGIC, cephMagic};

} // namespace

InotifyCalls& InotifyCalls::system() {
    static InotifyCalls calls;
    return calls;
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

bool InotifyCalls::tellsEvents(const char* path) {
    struct statfs status = {};
    if (statfs(path, &status) != 0)
        return true;
    const auto type = static_cast<std::uint32_t>(status.f_type);
    return std::find(silentFileSystems.begin(), silentFileSystems.end(), type) == silentFileSystems.end();
}

} // namespace Stemhaven
