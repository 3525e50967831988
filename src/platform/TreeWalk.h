#pragma once

#include <QStringList>

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// Which names are those of bundles. The walk, the events and the replay all ask here. Compares the bytes on
/// disk: most entries of a library are neither bundles nor folders, and turning each name into a QString
/// would cost more than reading it.
class BundleNames {
public:
    explicit BundleNames(const QStringList& suffixes);

    /// Takes a name or a path. False for a hidden name: on some disks a Mac leaves a hidden file beside each
    /// bundle, "._Song.logicx" for "Song.logicx".
    bool isBundle(std::string_view path) const;

private:
    std::vector<std::string> m_suffixes;
};

/// Reports the names of the folders in a folder, except links, "." and "..", in no particular order. Returns
/// 0, or the errno of a folder that cannot be read.
int readFolders(const std::string& folder, const std::function<void(const std::string& name)>& onFolder);

/// What lies in a folder.
struct FolderListing {
    enum class Kind { Folder, Link, Other };

    struct Entry {
        std::string name;
        Kind kind = Kind::Other;
    };

    /// Without "." and "..", in no particular order. Reads no more than that many entries.
    static FolderListing
    of(const std::string& folder, std::size_t mostEntries = std::numeric_limits<std::size_t>::max());
    /// As of(), but gives up after a while, with ETIMEDOUT, where a remote file system does not answer.
    static FolderListing withPatience(const std::string& folder);

    std::vector<Entry> entries;
    /// The errno of a folder that cannot be read to its end, else 0.
    int error = 0;
    /// Whether the folder has more entries than were to be read.
    bool isCut = false;
};

/// Visits a folder and all folders below it in which bundles can lie: not bundles, not hidden folders, no
/// links. An empty function is not called.
struct TreeWalk {
    /// Lists a folder in place of FolderListing::of(), as where it may not answer.
    std::function<FolderListing(const std::string& folder)> list;
    /// Asked before a folder is read; the folder is passed over when the answer is false.
    std::function<bool(const std::string& folder)> enter;
    /// Gets the path of each entry that is named like a bundle and is no link. A plain file is reported too,
    /// so that a bundle which arrived broken shows in the log.
    std::function<void(const std::string& bundle)> onBundle;
    /// Gets each folder that cannot be read, and the errno. A folder that was moved or deleted during the
    /// walk is not reported, except the top.
    std::function<void(const std::string& folder, int error)> onUnreadable;
    /// Asked before each entry. The walk ends when the answer is true.
    std::function<bool()> isStopped;

    void walk(const std::string& top, const BundleNames& names) const;
};

} // namespace Stemhaven
