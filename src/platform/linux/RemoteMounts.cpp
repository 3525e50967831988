#include "platform/RemoteCalls.h"
#include "platform/linux/MountTable.h"

#include <QFile>
#include <QHash>

#include <fcntl.h>
#include <poll.h>

#include <mutex>

namespace Stemhaven {

namespace {

/// The mount table, read anew whenever something was mounted or unmounted.
class CurrentMounts {
public:
    QString remoteMountOf(const QString& path) {
        if (haveChanged()) {
            m_mounts = MountTable::current();
            m_known.clear();
        }
        if (!m_mounts.hasRemote() || !path.startsWith(u'/'))
            return {};
        // Following a path costs a look at each folder of it.
        if (const auto found = m_known.constFind(path); found != m_known.cend())
            return *found;
        if (m_known.size() > mostKnown)
            m_known.clear();
        const auto place = m_mounts.find(QFile::encodeName(path).toStdString());
        return m_known[path] = place.isRemote ? QFile::decodeName(place.path.c_str()) : QString();
    }

private:
    static constexpr qsizetype mostKnown = 10'000;

    bool haveChanged() {
        // Stays open for as long as the program runs.
        if (m_descriptor < 0)
            m_descriptor = open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
        pollfd change = {m_descriptor, POLLPRI, 0};
        const bool isKnown = m_isRead && m_descriptor >= 0 && poll(&change, 1, 0) == 0;
        m_isRead = true;
        return !isKnown;
    }

    int m_descriptor = -1;
    bool m_isRead = false;
    MountTable m_mounts;
    QHash<QString, QString> m_known;
};

} // namespace

QString RemoteCalls::mountOf(const QString& path) {
    // Never destroyed: threads that end late may still ask.
    static auto& mutex = *new std::mutex;
    static auto& mounts = *new CurrentMounts;
    const std::lock_guard lock(mutex);
    return mounts.remoteMountOf(path);
}

} // namespace Stemhaven
