#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Stemhaven {

/// What a folder is watched for; it can be several at once.
enum WatchPurpose : unsigned {
    /// A folder in which bundles are looked for.
    WatchFolder = 0x1,
    WatchBundle = 0x2,
    WatchResources = 0x4,
    WatchAlternatives = 0x8,
    WatchAlternative = 0x10,
    /// A folder above projects that lie below no root, or directly above such a folder.
    WatchAncestor = 0x20,
    /// The folder of a project that lies below no root.
    WatchStrayFolder = 0x40,
    /// A root or a folder above one.
    WatchRootPath = 0x80,
    /// The lowest folder that exists above a root that does not.
    WatchForRoot = 0x100,

    WatchBundlePart = WatchBundle | WatchResources | WatchAlternatives | WatchAlternative
};

struct Watch {
    int descriptor = -1;
    unsigned purposes = 0;
    /// The inode from when the watch was set, 0 for parts of bundles.
    std::uint64_t fileID = 0;
};

/// Which folder each watch is on. A watch follows its folder when that is moved, its path does not: the table
/// moves the paths.
class WatchTable {
public:
    struct Entry {
        const std::string* path = nullptr;
        Watch* watch = nullptr;

        explicit operator bool() const { return watch != nullptr; }
    };

    Entry find(int descriptor);
    Entry find(const std::string& path);

    /// Neither the path nor the descriptor may be in the table.
    void put(const std::string& path, const Watch& watch);

    /// The folder and all below it are now found at another path. Nothing may be in the table there.
    void move(const std::string& from, const std::string& to);

    /// Takes the folder and all below it out. Their events that are still to come are expected: see
    /// isReleased().
    std::vector<int> release(const std::string& path);
    /// The folder alone.
    std::optional<int> releaseOne(const std::string& path);

    /// The system has dropped the watch.
    void forget(int descriptor);

    /// For a watch that was set and dropped again without having been put into the table.
    void expectEventsOf(int descriptor) { m_released.insert(descriptor); }

    bool isReleased(int descriptor) const { return m_released.contains(descriptor); }

    /// The inode of the folder at path, also of one that left that path without the event having come yet.
    std::uint64_t fileIDOf(const std::string& path);

    /// No event is left that could ask for a folder that left its path.
    void forgetFormer() { m_formerIDs.clear(); }

    void clear();

    std::size_t size() const { return m_byPath.size(); }

private:
    using ByPath = std::map<std::string, Watch>;

    /// The folder itself and all below it.
    std::vector<ByPath::iterator> atOrBelow(const std::string& path);
    int takeOut(ByPath::iterator it);

    ByPath m_byPath;
    std::unordered_map<int, ByPath::iterator> m_byDescriptor;
    std::unordered_set<int> m_released;
    std::unordered_map<std::string, std::uint64_t> m_formerIDs;
};

} // namespace Stemhaven
