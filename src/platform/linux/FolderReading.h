#pragma once

#include "platform/linux/BundleNames.h"

#include <cstdint>
#include <functional>
#include <string>

namespace Stemhaven {

/// What the system knows a folder by, whatever it is called.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    /// All zero when there is nothing at path. A link is followed only where that is asked for.
    static FolderIdentity of(const std::string& path, bool followLink = false);

    explicit operator bool() const { return inode != 0; }

    bool operator==(const FolderIdentity&) const = default;
};

/// Names the folders in a folder, links and "." and ".." excepted, in no order. Returns 0, or the errno of a
/// folder that cannot be read.
int readFolders(const std::string& folder, const std::function<void(const std::string& name)>& onFolder);

/// Goes through a tree as far as bundles can lie in it: not into bundles, not into hidden folders, not
/// through links.
struct TreeWalk {
    /// Asked before a folder is read; it is passed over when the answer is false.
    std::function<bool(const std::string& folder)> enter;
    std::function<void(const std::string& bundle)> onBundle;
    std::function<void(const std::string& folder, int error)> onUnreadable;

    void walk(const std::string& top, const BundleNames& names) const;
};

} // namespace Stemhaven
