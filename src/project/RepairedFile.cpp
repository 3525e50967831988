#include "project/RepairedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>

namespace Stemhaven {

namespace {

/// How many damaged files are kept of one name, where repairs were interrupted.
constexpr int mostKept = 20;

std::string damagedName(const std::string& name, int number) {
    return name + ".damaged" + (number == 1 ? std::string() : '-' + std::to_string(number));
}

std::optional<struct stat> statusOf(const OpenFolder& folder, const std::string& name) {
    struct stat status = {};
    if (fstatat(folder.descriptor(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return status;
}

bool isSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Gives the number of bytes to end or fail at, -1 for an error.
ssize_t readSome(int descriptor, std::vector<char>& buffer) {
    ssize_t count = -1;
    do {
        count = read(descriptor, buffer.data(), buffer.size());
    } while (count < 0 && errno == EINTR);
    return count;
}

bool copy(int descriptor, off_t size, FileReplacement& target) {
    constexpr std::size_t bufferSize = 1 << 20;
    std::vector<char> buffer(bufferSize);
    off_t copied = 0;
    for (;;) {
        const ssize_t count = readSome(descriptor, buffer);
        // A file that grows or shrinks meanwhile is being written.
        if (count < 0 || copied + count > size)
            return false;
        if (count == 0)
            return copied == size;
        if (!target.write({buffer.data(), static_cast<std::size_t>(count)}))
            return false;
        copied += count;
    }
}

} // namespace

RepairedFile::RepairedFile(const OpenFolder& folder, std::string name)
    : m_folder(folder),
      m_name(std::move(name)) {
    m_replacement.emplace_back(m_folder, m_name);
}

RepairedFile::~RepairedFile() {
    putBack();
}

bool RepairedFile::isReplacing() const {
    return statusOf(m_folder, m_name).has_value();
}

bool RepairedFile::isWritable() {
    return write({});
}

bool RepairedFile::write(std::string_view contents) {
    return m_replacement.front().write(contents);
}

bool RepairedFile::isIn(const OpenFolder& folder) const {
    const auto status = statusOf(folder, m_name);
    return status && S_ISREG(status->st_mode) && status->st_size > 0;
}

bool RepairedFile::copyFrom(const OpenFolder& folder) {
    // Opening a pipe must not wait for its other end.
    const int descriptor = openat(
        folder.descriptor(), m_name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    struct stat status = {};
    const bool isCopied = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0 &&
        copy(descriptor, status.st_size, m_replacement.front());
    close(descriptor);
    return isCopied;
}

bool RepairedFile::setAside() {
    const auto original = statusOf(m_folder, m_name);
    if (!original)
        return errno == ENOENT;
    if (S_ISDIR(original->st_mode))
        return false;
    // What an interrupted repair set aside is the older original, and is kept as well.
    for (int number = 1; number <= mostKept; ++number) {
        const std::string kept = damagedName(m_name, number);
        const auto status = statusOf(m_folder, kept);
        if (!status)
            return setAsideAs(kept);
        if (isSameFile(*status, *original)) {
            m_damagedName = kept;
            return true;
        }
    }
    return false;
}

bool RepairedFile::setAsideAs(const std::string& kept) {
    const int folder = m_folder.descriptor();
    // A second name leaves the first one in place until the new file takes it. Some file systems, of USB
    // sticks above all, know no second names.
    if (linkat(folder, m_name.c_str(), folder, kept.c_str(), 0) != 0) {
        if (renameat(folder, m_name.c_str(), folder, kept.c_str()) != 0)
            return false;
        m_isMoved = true;
    }
    m_damagedName = kept;
    return true;
}

bool RepairedFile::putInPlace() {
    const bool isInPlace = FileReplacement::putInPlace(m_replacement);
    if (isInPlace)
        m_damagedName.clear();
    else
        putBack();
    return isInPlace;
}

void RepairedFile::putBack() {
    const std::string kept = std::exchange(m_damagedName, {});
    if (kept.empty())
        return;
    const int folder = m_folder.descriptor();
    if (!std::exchange(m_isMoved, false))
        unlinkat(folder, kept.c_str(), 0);
    else if (!isReplacing())
        renameat(folder, kept.c_str(), folder, m_name.c_str());
}

void RepairedFile::removeDamaged(const OpenFolder& folder, const std::string& name) {
    for (int number = 1; number <= mostKept; ++number)
        unlinkat(folder.descriptor(), damagedName(name, number).c_str(), 0);
}

} // namespace Stemhaven
