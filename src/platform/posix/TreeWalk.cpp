#include "platform/TreeWalk.h"

#include "platform/posix/PathText.h"

#include <QFile>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

namespace Stemhaven {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

enum class EntryKind { Folder, Link, Other };

EntryKind kindOf(const std::string& folder, const dirent& entry) {
    if (entry.d_type == DT_DIR)
        return EntryKind::Folder;
    if (entry.d_type == DT_LNK)
        return EntryKind::Link;
    if (entry.d_type != DT_UNKNOWN)
        return EntryKind::Other;
    struct stat status = {};
    if (lstat(entryOf(folder, entry.d_name).c_str(), &status) != 0)
        return EntryKind::Other;
    if (S_ISDIR(status.st_mode))
        return EntryKind::Folder;
    return S_ISLNK(status.st_mode) ? EntryKind::Link : EntryKind::Other;
}

/// Returns 0, or the errno of a folder that cannot be read. Ends early when onEntry returns false.
template <typename OnEntry>
int readEntries(const std::string& folder, const OnEntry& onEntry) {
    const std::unique_ptr<DIR, FolderCloser> stream(opendir(folder.c_str()));
    if (stream == nullptr)
        return errno;
    for (;;) {
        errno = 0;
        const dirent* entry =
            readdir(stream.get()); // NOLINT(concurrency-mt-unsafe): the stream is this thread's own
        if (entry == nullptr)
            return errno;
        if (!onEntry(*entry))
            return 0;
    }
}

} // namespace

BundleNames::BundleNames(const QStringList& suffixes) {
    for (const auto& suffix : suffixes)
        m_suffixes.push_back(QFile::encodeName(suffix).toStdString());
}

bool BundleNames::isBundle(std::string_view path) const {
    const bool hasSuffix =
        std::any_of(m_suffixes.begin(), m_suffixes.end(), [path](const std::string& suffix) {
            return path.ends_with(suffix);
        });
    return hasSuffix && !isHidden(path);
}

int readFolders(const std::string& folder, const std::function<void(const std::string&)>& onFolder) {
    return readEntries(folder, [&](const dirent& entry) {
        const std::string_view name = entry.d_name;
        if (name != "." && name != ".." && kindOf(folder, entry) == EntryKind::Folder)
            onFolder(entry.d_name);
        return true;
    });
}

void TreeWalk::walk(const std::string& top, const BundleNames& names) const {
    std::vector<std::string> folders{top};
    bool isOver = false;
    while (!folders.empty() && !isOver) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        if (enter && !enter(folder))
            continue;
        const int error = readEntries(folder, [&](const dirent& entry) {
            const std::string_view name = entry.d_name;
            isOver = isStopped && isStopped();
            if (isOver || name.starts_with('.'))
                return !isOver;
            const EntryKind kind = kindOf(folder, entry);
            if (kind != EntryKind::Link && names.isBundle(name))
                onBundle(entryOf(folder, name));
            else if (kind == EntryKind::Folder)
                folders.push_back(entryOf(folder, name));
            return true;
        });
        const bool isGone = error == ENOENT && folder != top;
        if (error != 0 && !isGone && onUnreadable)
            onUnreadable(folder, error);
    }
}

} // namespace Stemhaven
