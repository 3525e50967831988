#include "platform/RemoteCalls.h"
#include "platform/linux/MountTable.h"

#include <QFile>
#include <QHash>

#include <chrono>
#include <mutex>

namespace Stemhaven {

QString RemoteCalls::mountOf(const QString& path) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::seconds longestAge(1);
    static std::mutex mutex;
    static MountTable mounts;
    static Clock::time_point readAt;
    static QHash<QString, QString> known;

    const std::lock_guard lock(mutex);
    if (readAt == Clock::time_point() || Clock::now() - readAt > longestAge) {
        mounts = MountTable::current();
        readAt = Clock::now();
        known.clear();
    }
    if (!mounts.hasRemote() || !path.startsWith(u'/'))
        return {};
    // Following a path costs a look at each folder of it.
    if (const auto found = known.constFind(path); found != known.cend())
        return *found;
    const auto place = mounts.find(QFile::encodeName(path).toStdString());
    return known[path] = place.isRemote ? QFile::decodeName(place.path.c_str()) : QString();
}

} // namespace Stemhaven
