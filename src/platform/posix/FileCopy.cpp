#include "platform/FileCopy.h"

#include "platform/FileReplacement.h"
#include "platform/OpenFolder.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace Stemhaven {

namespace {

constexpr int readingAtOnce = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}

    ~Descriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return m_number; }

    bool isOpen() const { return m_number >= 0; }

private:
    int m_number;
};

bool writeAll(int descriptor, const char* data, ssize_t size) {
    while (size > 0) {
        const ssize_t written = write(descriptor, data, static_cast<size_t>(size));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data += written;
        size -= written;
    }
    return true;
}

bool copyContents(int from, int to) {
    constexpr size_t pieceSize = 1 << 20;
    std::vector<char> piece(pieceSize);
    while (true) {
        const ssize_t got = read(from, piece.data(), piece.size());
        if (got == 0)
            return true;
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 || !writeAll(to, piece.data(), got))
            return false;
    }
}

bool flush(int descriptor) {
    int result = -1;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    // There are file systems that cannot be asked to.
    return result == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace

bool copyToNewFile(const QString& from, const QString& to) {
    constexpr mode_t ownerOnly = 0600;
    const Descriptor source(open(QFile::encodeName(from).constData(), readingAtOnce));
    struct stat status = {};
    if (!source.isOpen() || fstat(source.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const QByteArray name = QFile::encodeName(to);
    const Descriptor target(open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly));
    if (!target.isOpen())
        return false;
    if (copyContents(source.number(), target.number()) && flush(target.number()))
        return true;
    const int reason = errno;
    unlink(name.constData());
    errno = reason;
    return false;
}

bool replaceFile(const QString& path, const QByteArray& contents) {
    const QFileInfo file(path);
    const OpenFolder folder(QFile::encodeName(file.absolutePath()).toStdString());
    std::vector<FileReplacement> files;
    files.emplace_back(folder, QFile::encodeName(file.fileName()).toStdString());
    return files.front().write({contents.constData(), static_cast<size_t>(contents.size())}) &&
        FileReplacement::putInPlace(files) && flush(folder.descriptor());
}

bool flushToDisk(const QString& path) {
    const Descriptor file(open(QFile::encodeName(path).constData(), readingAtOnce));
    return file.isOpen() && flush(file.number());
}

} // namespace Stemhaven
