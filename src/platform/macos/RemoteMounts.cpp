#include "platform/RemoteCalls.h"

#include <QFile>

#include <sys/mount.h>

#include <vector>

namespace Stemhaven {

QString RemoteCalls::mountOf(const QString& path) {
    // Without asking the file systems themselves.
    const int number = getfsstat(nullptr, 0, MNT_NOWAIT);
    std::vector<struct statfs> mounts(number > 0 ? static_cast<std::size_t>(number) : 0);
    const int size = static_cast<int>(mounts.size() * sizeof(struct statfs));
    const int filled = mounts.empty() ? 0 : getfsstat(mounts.data(), size, MNT_NOWAIT);
    QString innermost;
    bool isRemote = false;
    for (int i = 0; i < filled; ++i) {
        const auto& mount = mounts[static_cast<std::size_t>(i)];
        const QString point = QFile::decodeName(mount.f_mntonname);
        const bool isAbove = path == point || path.startsWith(point.endsWith(u'/') ? point : point + u'/');
        if (!isAbove || point.size() < innermost.size())
            continue;
        innermost = point;
        isRemote = (mount.f_flags & MNT_LOCAL) == 0;
    }
    return isRemote ? innermost : QString();
}

} // namespace Stemhaven
