#include "platform/linux/FolderReading.h"

#include "platform/linux/PathText.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

namespace Stemhaven {

namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool isFolder(const std::string& folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status = {};
    return lstat(entryOf(folder, entry.d_name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

FolderIdentity FolderIdentity::of(const std::string& path, bool followLink) {
    struct stat status = {};
    if ((followLink ? stat(path.c_str(), &status) : lstat(path.c_str(), &status)) != 0)
        return {};
    return {status.st_dev, status.st_ino};
}

int readFolders(const std::string& folder, const std::function<void(const std::string&)>& onFolder) {
    const std::unique_ptr<DIR, FolderCloser> stream(opendir(folder.c_str()));
    if (stream == nullptr)
        return errno;
    for (;;) {
        errno = 0;
        const dirent* entry =
            readdir(stream.get()); // NOLINT(concurrency-mt-unsafe): the stream is this thread's own
        if (entry == nullptr)
            return errno;
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && isFolder(folder, *entry))
            onFolder(name);
    }
}

void TreeWalk::walk(const std::string& top, const BundleNames& names) const {
    std::vector<std::string> folders{top};
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        if (!enter(folder))
            continue;
        const int error = readFolders(folder, [&](const std::string& name) {
            if (names.isBundle(name))
                onBundle(entryOf(folder, name));
            else if (!isHidden(name))
                folders.push_back(entryOf(folder, name));
        });
        if (error != 0)
            onUnreadable(folder, error);
    }
}

} // namespace Stemhaven
