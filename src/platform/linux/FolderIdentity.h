#pragma once

#include <cstdint>
#include <string>

namespace Stemhaven {

/// How the system identifies a folder, whatever it is called.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    /// All zero when there is nothing at path. A link is followed only where that is asked for.
    static FolderIdentity of(const std::string& path, bool followLink = false);

    explicit operator bool() const { return inode != 0; }

    bool operator==(const FolderIdentity&) const = default;
};

} // namespace Stemhaven
