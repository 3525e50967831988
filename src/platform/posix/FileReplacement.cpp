#include "platform/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace Stemhaven {

namespace {

/// A new file beside a target. It disappears with its object unless it has taken the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    void takeModeOf(const std::string& target) const;
    bool write(std::string_view contents) const;
    bool close();
    bool renameTo(const std::string& target);

private:
    std::string m_path;
    int m_descriptor = -1;
};

TemporaryFile::TemporaryFile(const std::string& target) {
    // Not mkstemp: it makes the file private to the user, and the mask that a new file should have instead
    // cannot be read without changing it for every thread.
    static std::atomic<unsigned> counter = 0;
    constexpr int attempts = 100;
    constexpr mode_t everyone = 0666;
    for (int attempt = 0; attempt < attempts && !isOpen(); ++attempt) {
        m_path = target + '.' + std::to_string(getpid()) + '-' + std::to_string(counter++);
        m_descriptor = open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everyone);
        if (!isOpen() && errno != EEXIST && errno != EINTR)
            break;
    }
    if (!isOpen())
        m_path.clear();
}

TemporaryFile::~TemporaryFile() {
    close();
    if (!m_path.empty())
        unlink(m_path.c_str());
}

void TemporaryFile::takeModeOf(const std::string& target) const {
    constexpr mode_t permissions = 07777;
    struct stat status = {};
    if (lstat(target.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    // Refused by file systems that keep no modes, where none is lost either.
    fchmod(m_descriptor, status.st_mode & permissions);
}

bool TemporaryFile::write(std::string_view contents) const {
    while (!contents.empty()) {
        const ssize_t written = ::write(m_descriptor, contents.data(), contents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool TemporaryFile::close() {
    if (!isOpen())
        return true;
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    return ::close(descriptor) == 0;
}

bool TemporaryFile::renameTo(const std::string& target) {
    if (std::rename(m_path.c_str(), target.c_str()) != 0)
        return false;
    m_path.clear();
    return true;
}

/// Whether the text is a process and a count, which TemporaryFile appends to its target's name.
bool isTemporaryEnding(std::string_view text) {
    const auto isNumber = [](std::string_view part) {
        return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const auto dash = text.find('-');
    return text.starts_with('.') && dash != std::string_view::npos && isNumber(text.substr(1, dash - 1)) &&
        isNumber(text.substr(dash + 1));
}

void removeAbandonedTemporaries(const std::filesystem::path& target) {
    // One that is younger may be another program's, which is about to rename it.
    constexpr std::chrono::minutes longestReplacement(10);
    const std::string name = target.filename().native();
    std::error_code error;
    std::filesystem::directory_iterator entries(target.parent_path(), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::string entry = entries->path().filename().native();
        if (!entry.starts_with(name) || !isTemporaryEnding(std::string_view(entry).substr(name.size())))
            continue;
        std::error_code unknown;
        const auto written = entries->last_write_time(unknown);
        if (!unknown && std::filesystem::file_time_type::clock::now() - written > longestReplacement)
            unlink(entries->path().c_str());
    }
}

} // namespace

// Nothing here forces the contents to the disk. Some half a millisecond a file, far more on a drive that
// takes a flush seriously, is too much for a scan that writes into every bundle it finds, and no reader ever
// sees the difference.
bool replaceFile(const std::string& path, std::string_view contents) {
    TemporaryFile file(path);
    if (!file.isOpen())
        return false;
    file.takeModeOf(path);
    if (!file.write(contents) || !file.close() || !file.renameTo(path))
        return false;
    removeAbandonedTemporaries(path);
    return true;
}

} // namespace Stemhaven
