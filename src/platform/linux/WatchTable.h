#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
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

    WatchBundlePart = WatchBundle | WatchResources | WatchAlternatives | WatchAlternative,
    /// By its place in a tree a folder has one of these.
    WatchInTree = WatchFolder | WatchBundlePart
};

struct Watch {
    int descriptor = -1;
    unsigned purposes = 0;
    /// The inode from when the watch was set, 0 for parts of bundles.
    std::uint64_t fileID = 0;
    /// The last look at the tree that found the folder here.
    unsigned look = 0;
    /// Whether something happened in it while it was detached.
    bool isTouched = false;
};

/// Which folder each watch is on. A watch follows its folder when that is moved, its path does not: the table
/// moves the paths.
///
/// A folder that is not at its path any more is detached with all below it: it stays watched for a while,
/// under a name that is no path, so that it is known again where it turns up.
class WatchTable {
public:
    using Clock = std::chrono::steady_clock;

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

    /// The folder and all below it have left. Where it was seen last may be another path than the table's.
    void detach(const std::string& path, const std::string& seenAt);

    void detach(const std::string& path) { detach(path, path); }

    static bool isDetached(const std::string& path) { return path.starts_with(detachedMark); }

    /// Where a folder was seen last, for what is detached; the path itself for all others.
    std::string seenAt(const std::string& path) const;

    /// Takes out what has been detached for longer than the patience, as release() does.
    std::vector<int> takeGone(Clock::duration patience);
    /// Since when the oldest is detached; nothing when there is none.
    std::optional<Clock::time_point> oldestDetached() const;

    /// The folders at or below path in which something happened while they were detached, once.
    std::vector<std::string> takeTouched(const std::string& path);

    /// The folders below path, each above its own, that a look did not find, from outermost to innermost.
    std::vector<std::string> missedBy(unsigned look, const std::string& path);

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

    /// The inode of the folder at path, 0 if there is none in the table.
    std::uint64_t fileIDOf(const std::string& path);

    /// What was at a path, without its path.
    struct Former {
        std::uint64_t fileID = 0;
        int descriptor = -1;
    };

    /// A folder left path without the event having come yet.
    void noteFormer(const std::string& path, const Former& former);
    /// What left path so last, once. Is not confused by the folder above being moved.
    std::optional<Former> takeFormer(const std::string& path);

    /// No event is left that could ask for a folder that left its path.
    void forgetFormer() { m_former.clear(); }

    void clear();

    std::size_t size() const { return m_byPath.size(); }

private:
    using ByPath = std::map<std::string, Watch>;

    static constexpr char detachedMark = '?';

    struct Detached {
        std::string seenAt;
        Clock::time_point since;
    };

    /// The folder itself and all below it.
    std::vector<ByPath::iterator> atOrBelow(const std::string& path);
    int takeOut(ByPath::iterator it);

    ByPath m_byPath;
    std::unordered_map<int, ByPath::iterator> m_byDescriptor;
    std::unordered_set<int> m_released;
    /// By the watch of the folder above and the name.
    std::map<std::pair<int, std::string>, Former> m_former;
    std::map<std::string, Detached> m_detached;
    std::uint64_t m_detachments = 0;
};

} // namespace Stemhaven
