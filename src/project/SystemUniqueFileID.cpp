#include "project/SystemUniqueFileID.h"

#include <sys/stat.h>

#include <cerrno>

namespace Stemhaven {

namespace {

/// Null for an errno that a look-up of a path does not usually give.
const char* explanation(int error) {
    switch (error) {
    case ENOENT:
        return "Could not get SUFID. Path not found, empty string, or dangling symbolic link: ";
    case ENOMEM:
        return "Could not get SUFID. Out of memory. Path: ";
    case EACCES:
        return "Could not get SUFID. Search permissions denied for path ";
    case EFAULT:
        return "Could not get SUFID. Bad address. Path: ";
    case ENOTDIR:
        return "Could not get SUFID. Part of path is not a directory! Path: ";
    case ENAMETOOLONG:
        return "Could not get SUFID. Path name is too long: ";
    case EOVERFLOW:
        return "Could not get SUFID. Cannot represent fileID because of value overflow! "
               "(Try upgrade to uint128_t) Path: ";
    default:
        return nullptr;
    }
}

void logFailure(int error, const char* path) {
    if (const char* text = explanation(error))
        qDebug() << text << path;
    else
        qWarning() << "Could not get SUFID. Unknown errno:" << error << " Path: " << path;
}

SystemUniqueFileID identityIn(const struct stat& status) {
    SystemUniqueFileID sufid;
    // The stored texts hold 32 bits of the device, also where the system's number is wider.
    sufid.device = static_cast<std::int32_t>(status.st_dev);
    sufid.inode = status.st_ino;
    sufid.valid = true;
    return sufid;
}

} // namespace

SystemUniqueFileID::SystemUniqueFileID(const char* path) {
    if (path == nullptr) {
        logFailure(EFAULT, path);
        return;
    }
    struct stat status = {};
    if (stat(path, &status) != 0) {
        logFailure(errno, path);
        return;
    }
    *this = identityIn(status);
}

SystemUniqueFileID SystemUniqueFileID::of(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 ? identityIn(status) : SystemUniqueFileID();
}

SystemUniqueFileID SystemUniqueFileID::fromString(const QString& text) {
    SystemUniqueFileID id;
    const qsizetype dash = text.lastIndexOf(u'-');
    bool isDevice = false;
    bool isInode = false;
    const auto device = QStringView(text).left(dash).toInt(&isDevice);
    const auto inode = QStringView(text).mid(dash + 1).toULongLong(&isInode);
    if (dash > 0 && isDevice && isInode) {
        id.device = device;
        id.inode = inode;
        id.valid = true;
    }
    return id;
}

QString SystemUniqueFileID::toString() const {
    return QString::number(device) + QLatin1Char('-') + QString::number(inode);
}

bool operator==(const SystemUniqueFileID& a, const SystemUniqueFileID& b) {
    return a.inode == b.inode && a.device == b.device;
}

bool operator!=(const SystemUniqueFileID& a, const SystemUniqueFileID& b) {
    return !(a == b);
}

bool operator<(const SystemUniqueFileID& a, const SystemUniqueFileID& b) {
    return a.device < b.device || a.inode < b.inode;
}

QDebug operator<<(QDebug debug, const SystemUniqueFileID& sufid) {
    return debug << qUtf8Printable(sufid.toString());
}

} // namespace Stemhaven
