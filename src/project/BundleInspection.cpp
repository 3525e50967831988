#include "project/BundleInspection.h"

#include "app/errors/IOException.h"
#include "platform/OpenFolder.h"
#include "platform/PlainFile.h"
#include "platform/TreeWalk.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace Stemhaven::BundleInspection {

namespace {

constexpr qint64 maxListSize = 4 << 20;

std::string encoded(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

/// Whether a call failed because there is nothing of the wanted kind at the path.
bool isAbsence(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP;
}

[[noreturn]] void throwUnreadable(const QString& path, const QString& why) {
    // The message reaches the log and the terminal as it stands, so the path is quoted.
    QString quoted;
    QDebug(&quoted).nospace() << path;
    throw IOException(QStringLiteral("Could not be looked at: %1, %2").arg(quoted, why));
}

[[noreturn]] void throwUnreadable(const QString& path, int error) {
    throwUnreadable(path, QString::fromLocal8Bit(std::generic_category().message(error)));
}

/// The size of the plain file at path. Nothing where there is none.
std::optional<qint64> fileSize(const QString& path, Links links) {
    struct stat status = {};
    const int flags = links == Links::Follow ? 0 : AT_SYMLINK_NOFOLLOW;
    if (fstatat(AT_FDCWD, encoded(path).c_str(), &status, flags) != 0) {
        if (!isAbsence(errno))
            throwUnreadable(path, errno);
        return std::nullopt;
    }
    return S_ISREG(status.st_mode) ? std::optional<qint64>(status.st_size) : std::nullopt;
}

} // namespace

bool isFolder(const QString& path) {
    const OpenFolder folder(encoded(path));
    if (!folder.isOpen() && !isAbsence(errno))
        throwUnreadable(path, errno);
    return folder.isOpen();
}

QStringList numberedFolders(const QString& folder, int greatest) {
    QStringList names;
    const int error = readFolders(encoded(folder), [&](const std::string& name) {
        bool isNumber = false;
        const QString text = QFile::decodeName(name.c_str());
        const int number = text.toInt(&isNumber);
        if (isNumber && number >= 0 && number <= greatest)
            names += text;
    });
    if (error != 0 && !isAbsence(error))
        throwUnreadable(folder, error);
    names.sort();
    return names;
}

std::optional<ProjectInformation> readInformation(const QString& bundlePath) {
    const QString path = informationPath(bundlePath);
    const auto size = fileSize(path, Links::Follow);
    if (!size)
        return std::nullopt;
    // A list that we refuse for its size, or may not open, is not damaged by that.
    const auto contents = readPlainFile(path, maxListSize);
    if (!contents || contents->size() < *size)
        throwUnreadable(path, QStringLiteral("closed to us, or too large"));
    try {
        return ProjectInformation(path);
    } catch (const std::exception& error) {
        qDebug() << "Attempt to read ProjectInformation failed. Unreadable plist: " << path
                 << QString::fromUtf8(error.what());
        return std::nullopt;
    }
}

std::optional<QDateTime> completeSnapshot(const QString& folder, Links links) {
    const QString list = folder + QStringLiteral("/MetaData.plist");
    for (const auto& file : {list, folder + QStringLiteral("/ProjectData")}) {
        if (fileSize(file, links).value_or(0) < 1)
            return std::nullopt;
    }
    return QFileInfo(list).lastModified();
}

} // namespace Stemhaven::BundleInspection
