#include "platform/PlainFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

namespace Stemhaven {

namespace {

// Opening must not wait for the other end of a pipe, so the file is asked what it is only once it is open.
constexpr int readingAtOnce = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

bool always() {
    return true;
}

/// Closes the descriptor.
std::optional<QByteArray>
contents(int descriptor, qint64 maxSize, const std::function<bool()>& isWanted = always) {
    constexpr qint64 atOnce = 1 << 20;
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return std::nullopt;

    struct stat status {};

    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > maxSize)
        return std::nullopt;
    // No further than that, though the file may be growing.
    QByteArray bytes;
    bytes.reserve(status.st_size);
    while (bytes.size() < status.st_size) {
        if (!isWanted())
            return std::nullopt;
        const QByteArray piece = file.read(std::min<qint64>(atOnce, status.st_size - bytes.size()));
        if (piece.isEmpty())
            break;
        bytes += piece;
    }
    return bytes;
}

} // namespace

std::optional<QByteArray> readPlainFile(const QString& path, qint64 maxSize) {
    return contents(open(QFile::encodeName(path).constData(), readingAtOnce), maxSize);
}

std::optional<QByteArray>
readPlainFile(const QString& path, qint64 maxSize, const std::function<bool()>& isWanted) {
    return contents(open(QFile::encodeName(path).constData(), readingAtOnce), maxSize, isWanted);
}

std::optional<QByteArray> readPlainFile(const OpenFolder& folder, const char* name, qint64 maxSize) {
    return contents(openat(folder.descriptor(), name, readingAtOnce | O_NOFOLLOW), maxSize);
}

} // namespace Stemhaven
