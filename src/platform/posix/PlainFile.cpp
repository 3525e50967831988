#include "platform/PlainFile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace Stemhaven {

std::optional<QByteArray> readPlainFile(const QString& path, qint64 maxSize) {
    // Opening must not wait for the other end of a pipe, so the file is asked what it is only once it is
    // open.
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return std::nullopt;

    struct stat status {};

    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size > maxSize)
        return std::nullopt;
    // No further than that, though the file may be growing.
    return file.read(status.st_size);
}

} // namespace Stemhaven
