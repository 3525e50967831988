#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace Stemhaven {

/// Which file systems are mounted where. Answers without asking a file system that may not answer: the mounts
/// come from the system's own table, and a path is followed only up to the first mount of a remote file
/// system.
class MountTable {
public:
    struct Place {
        /// Where the path leads, links followed. Ends at the mount point when the place is remote.
        std::string path;
        /// The number of the mount, 0 when it is not in the table. Another mount at the same place has
        /// another.
        int mount = 0;
        /// The file system is reached over a network or through another process: it may not answer, and
        /// events do not tell what others change in it.
        bool isRemote = false;
    };

    /// What is mounted now.
    static MountTable current();

    MountTable() = default;
    /// Reads the format of /proc/self/mountinfo.
    explicit MountTable(std::istream& table);

    bool hasRemote() const;

    /// Path is absolute; what it names need not exist.
    Place find(const std::string& path) const;

    /// The mount points below a folder that is given without links, sorted.
    std::vector<std::string> pointsBelow(const std::string& folder) const;

    /// The mount points of the mounts that are only in one of the two tables.
    std::vector<std::string> differences(const MountTable& other) const;

private:
    struct Mount {
        std::string point;
        int number = 0;
        int parent = 0;
        std::string type;

        auto operator<=>(const Mount&) const = default;
    };

    /// The mount on top of those at this path that is reached from another one; null if there is none.
    const Mount* mountedAt(const std::string& path, const Mount* from) const;

    std::vector<Mount> m_mounts;
};

} // namespace Stemhaven
