#include "platform/PlainFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace Stemhaven {

namespace {

// Opening must not wait for the other end of a pipe, so the file is asked what it is only once it is open.
constexpr int readingAtOnce = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// Closes the descriptor.
std::optional<QByteArray> contents(int descriptor, qint64 maxSize) {
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return std::nullopt;

    struct stat status {};

    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > maxSize)
        return std::nullopt;
    // No further than that, though the file may be growing.
    return file.read(status.st_size);
}

} // namespace

std::optional<QByteArray> readPlainFile(const QString& path, qint64 maxSize) {
    return contents(open(QFile::encodeName(path).constData(), readingAtOnce), maxSize);
}

std::optional<QByteArray> readPlainFile(const OpenFolder& folder, const char* name, qint64 maxSize) {
    return contents(openat(folder.descriptor(), name, readingAtOnce | O_NOFOLLOW), maxSize);
}

} // namespace Stemhaven
