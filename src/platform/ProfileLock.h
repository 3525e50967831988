#pragma once

#include <QString>

namespace Stemhaven {

/// Keeps a second start of the program off a profile: an exclusive lock of the kernel on a file, which ends
/// with the object or with the process, however that ends. What the file contains means nothing, and the file
/// is never removed. Child processes do not inherit the lock. One thread at a time.
class ProfileLock {
public:
    /// A file that is missing is made once the lock is taken; its folder must exist.
    explicit ProfileLock(const QString& path);
    ~ProfileLock();
    Q_DISABLE_COPY_MOVE(ProfileLock)

    /// False while somebody else holds the lock. A profile that cannot be locked (a folder that cannot be
    /// written, a file system without locks) can still be used, so that gives true and is logged.
    bool tryToTake();

private:
    QString m_path;
    int m_descriptor = -1;
};

} // namespace Stemhaven
