#include "platform/TreeWalk.h"

#include "platform/RemoteCalls.h"
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

using Kind = FolderListing::Kind;

Kind kindOf(const std::string& folder, const dirent& entry) {
    if (entry.d_type == DT_DIR)
        return Kind::Folder;
    if (entry.d_type == DT_LNK)
        return Kind::Link;
    if (entry.d_type != DT_UNKNOWN)
        return Kind::Other;
    struct stat status = {};
    if (lstat(entryOf(folder, entry.d_name).c_str(), &status) != 0)
        return Kind::Other;
    if (S_ISDIR(status.st_mode))
        return Kind::Folder;
    return S_ISLNK(status.st_mode) ? Kind::Link : Kind::Other;
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

FolderListing FolderListing::of(const std::string& folder, std::size_t mostEntries) {
    FolderListing listing;
    const std::unique_ptr<DIR, FolderCloser> stream(opendir(folder.c_str()));
    if (stream == nullptr) {
        listing.error = errno;
        return listing;
    }
    for (;;) {
        errno = 0;
        const dirent* entry =
            readdir(stream.get()); // NOLINT(concurrency-mt-unsafe): the stream is this thread's own
        if (entry == nullptr)
            break;
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        if (listing.entries.size() == mostEntries) {
            listing.isCut = true;
            return listing;
        }
        listing.entries.push_back({entry->d_name, kindOf(folder, *entry)});
    }
    listing.error = errno;
    return listing;
}

FolderListing FolderListing::withPatience(const std::string& folder) {
    auto listing = RemoteCalls::run(QFile::decodeName(folder.c_str()), [folder] { return of(folder); });
    return listing ? std::move(*listing) : FolderListing{{}, ETIMEDOUT, false};
}

int readFolders(const std::string& folder, const std::function<void(const std::string&)>& onFolder) {
    const auto listing = FolderListing::of(folder);
    for (const auto& entry : listing.entries) {
        if (entry.kind == Kind::Folder)
            onFolder(entry.name);
    }
    return listing.error;
}

void TreeWalk::walk(const std::string& top, const BundleNames& names) const {
    std::vector<std::string> folders{top};
    while (!folders.empty()) {
        const std::string folder = std::move(folders.back());
        folders.pop_back();
        if (enter && !enter(folder))
            continue;
        const auto listing = list ? list(folder) : FolderListing::of(folder);
        for (const auto& entry : listing.entries) {
            if (isStopped && isStopped())
                return;
            if (entry.name.starts_with('.'))
                continue;
            if (entry.kind != Kind::Link && names.isBundle(entry.name))
                onBundle(entryOf(folder, entry.name));
            else if (entry.kind == Kind::Folder)
                folders.push_back(entryOf(folder, entry.name));
        }
        const bool isGone = listing.error == ENOENT && folder != top;
        if (listing.error != 0 && !isGone && onUnreadable)
            onUnreadable(folder, listing.error);
    }
}

} // namespace Stemhaven
