#include "platform/FileReplacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/vfs.h>
#endif

#include <atomic>
#include <cerrno>
#include <ctime>
#include <memory>
#include <set>
#include <utility>

namespace Stemhaven {

namespace {

/// Whether the text is a process and a count, which FileReplacement appends to its target's name.
bool isTemporaryEnding(std::string_view text) {
    const auto isNumber = [](std::string_view part) {
        return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    const auto dash = text.find('-');
    return text.starts_with('.') && dash != std::string_view::npos && isNumber(text.substr(1, dash - 1)) &&
        isNumber(text.substr(dash + 1));
}

/// Not fdatasync, which spares nothing for a file that has just been made and is not declared everywhere.
bool flushed(int descriptor) {
    int result = -1;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    // There are file systems that cannot be asked to.
    return result == 0 || errno == EINVAL || errno == ENOTSUP;
}

#ifdef __linux__
/// Whether the file system writes all changes to one journal, in their order. A rename is on the disk only
/// after what had been written before it then, and one flush of the journal brings both there for many files.
/// A flush for each file costs many times that, since the drive has to empty its cache for each.
bool hasOneJournal(int folder) {
    constexpr decltype(statfs::f_type) ext4 = 0xEF53;
    constexpr decltype(statfs::f_type) xfs = 0x58465342;
    struct statfs status = {};
    return fstatfs(folder, &status) == 0 && (status.f_type == ext4 || status.f_type == xfs);
}
#endif

/// Brings to the disk what was done in folders, in this order, where that is one step for all.
void flushJournals([[maybe_unused]] const std::vector<int>& folders) {
#ifdef __linux__
    std::set<dev_t> done;
    // The last change of a journal brings all earlier ones with it.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        struct stat status = {};
        if (hasOneJournal(*folder) && fstat(*folder, &status) == 0 && done.insert(status.st_dev).second)
            flushed(*folder);
    }
#endif
}

bool isOldFile(int folder, const char* name) {
    // One that is younger may be another program's, which is about to rename it.
    constexpr time_t longestReplacement = 600;
    struct stat status = {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
        time(nullptr) - status.st_mtime > longestReplacement;
}

void removeAbandonedTemporaries(int folder, std::string_view target) {
    struct Closing {
        void operator()(DIR* entries) const { closedir(entries); }
    };

    // A descriptor of its own, since closing the entries closes it.
    const int reading = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, Closing> entries(reading < 0 ? nullptr : fdopendir(reading));
    if (!entries) {
        if (reading >= 0)
            close(reading);
        return;
    }
    while (const dirent* entry = readdir(entries.get())) {
        const std::string_view name = entry->d_name;
        if (name.starts_with(target) && isTemporaryEnding(name.substr(target.size())) &&
            isOldFile(folder, entry->d_name))
            unlinkat(folder, entry->d_name, 0);
    }
}

} // namespace

FileReplacement::FileReplacement(const OpenFolder& folder, std::string name)
    : m_folder(folder.descriptor()),
      m_name(std::move(name)) {
    open();
    if (isOpen())
        takePermissions();
}

FileReplacement::FileReplacement(FileReplacement&& other) noexcept
    : m_folder(other.m_folder),
      m_name(std::move(other.m_name)),
      m_temporary(std::exchange(other.m_temporary, {})),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileReplacement::~FileReplacement() {
    close();
    if (!m_temporary.empty())
        unlinkat(m_folder, m_temporary.c_str(), 0);
}

void FileReplacement::open() {
    // Not mkstemp: it makes the file private to the user, and the mask that a new file should have instead
    // cannot be read without changing it for every thread.
    static std::atomic<unsigned> counter = 0;
    constexpr int attempts = 100;
    constexpr mode_t everyone = 0666;
    for (int attempt = 0; attempt < attempts && !isOpen(); ++attempt) {
        m_temporary = m_name + '.' + std::to_string(getpid()) + '-' + std::to_string(counter++);
        m_descriptor =
            openat(m_folder, m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, everyone);
        if (!isOpen() && errno != EEXIST && errno != EINTR)
            break;
    }
    if (!isOpen())
        m_temporary.clear();
}

void FileReplacement::takePermissions() const {
    constexpr mode_t permissions = 07777;
    struct stat status = {};
    if (fstatat(m_folder, m_name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode))
        return;
    // Refused by file systems that keep no modes, where none is lost either.
    fchmod(m_descriptor, status.st_mode & permissions);
}

bool FileReplacement::write(std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = ::write(m_descriptor, contents.data(), contents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return isOpen();
}

void FileReplacement::beginFlush() const {
#ifdef __linux__
    sync_file_range(m_descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

bool FileReplacement::flush() const {
#ifdef __linux__
    constexpr unsigned all = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    if (hasOneJournal(m_folder))
        return sync_file_range(m_descriptor, 0, 0, all) == 0;
#endif
    return flushed(m_descriptor);
}

bool FileReplacement::close() {
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
}

bool FileReplacement::rename() {
    if (!close() || m_temporary.empty() ||
        renameat(m_folder, m_temporary.c_str(), m_folder, m_name.c_str()) != 0)
        return false;
    m_temporary.clear();
    return true;
}

bool FileReplacement::putInPlace(std::vector<FileReplacement>& files) {
    for (const auto& file : files)
        file.beginFlush();
    std::vector<FileReplacement*> ready;
    for (auto& file : files) {
        if (file.isOpen() && file.flush())
            ready.push_back(&file);
    }
    std::vector<int> folders;
    for (auto* file : ready) {
        if (file->rename())
            folders.push_back(file->m_folder);
    }
    flushJournals(folders);
    for (auto* file : ready)
        removeAbandonedTemporaries(file->m_folder, file->m_name);
    return folders.size() == files.size();
}

} // namespace Stemhaven
