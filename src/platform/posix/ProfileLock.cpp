#include "platform/ProfileLock.h"

#include <QDebug>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace Stemhaven {

namespace {

/// Does not wait for the other end where a pipe has the name.
int openLockFile(const QString& path) {
    constexpr mode_t ownerOnly = 0600;
    const QByteArray name = QFile::encodeName(path);
    const int descriptor = open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, ownerOnly);
    // Only NFS wants a file that is open for writing to lock it.
    return descriptor >= 0 ? descriptor : open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

} // namespace

ProfileLock::ProfileLock(const QString& path) : m_path(path) {}

ProfileLock::~ProfileLock() {
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool ProfileLock::tryToTake() {
    if (m_descriptor < 0)
        m_descriptor = openLockFile(m_path);
    // Not a lock of fcntl(), which the process loses when any descriptor of the file is closed.
    if (m_descriptor >= 0 && flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return true;
    if (m_descriptor >= 0 && errno == EWOULDBLOCK)
        return false;
    const QString reason = qt_error_string(errno);
    qCritical() << "Could not lock " << m_path << ": " << reason
                << ". A second start of the program will not be noticed.";
    return true;
}

} // namespace Stemhaven
