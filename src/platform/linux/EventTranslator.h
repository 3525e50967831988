#pragma once

#include "platform/TreeWalk.h"
#include "platform/linux/EventCoalescer.h"
#include "platform/linux/InotifyDescriptor.h"
#include "platform/linux/PendingMoves.h"
#include "platform/linux/RootSet.h"
#include "platform/linux/TreeWatcher.h"
#include "platform/linux/WatchTable.h"

#include <cstdint>
#include <string>

namespace Stemhaven {

/// Says what the system's events mean for bundles and folders, and keeps the watches on what is there now.
class EventTranslator {
public:
    struct Tools {
        const BundleNames& names;
        WatchTable& table;
        TreeWatcher& watcher;
        RootSet& roots;
        EventCoalescer& events;
        EventTrace& trace;
    };

    explicit EventTranslator(Tools tools) : m_tools(tools) {}

    /// False when it shows that events were lost.
    bool handle(const RawEvent& event);

    /// Takes the old halves of moves that wait for too long as moved out of sight.
    void settleMoves();

    std::optional<PendingMoves::Clock::time_point> nextSettling() const;

    void forgetMoves() { m_moves.clear(); }

private:
    void handleSelf(const RawEvent& event, const std::string& folder, unsigned purposes);
    void handleInBundle(const RawEvent& event, const std::string& folder, unsigned purposes);
    void handleInTree(const RawEvent& event, const std::string& path);
    void handleInAncestor(const RawEvent& event, const std::string& path);

    void arrive(const std::string& path, bool isFolder, std::uint32_t flags);
    void arriveFrom(const PendingMoves::OldHalf& old, const std::string& path, bool isFolder);
    void leaveTree(const PendingMoves::OldHalf& old, const std::string& path);
    void disappear(const std::string& path);
    void depart(const std::string& path, std::uint32_t cookie);
    WatchTable::Former leave(const std::string& path);
    void addRenamed(const std::string& path, std::uint64_t fileID, int watch, std::uint32_t flags = 0);
    /// Returns whether the folder itself was not known before.
    bool follow(const std::string& path);
    void found(const std::string& path, std::uint64_t fileID, const TreeWatcher::Arrival& arrival);
    bool changesKind(const std::string& from, const std::string& to) const;

    Tools m_tools;
    PendingMoves m_moves;
};

} // namespace Stemhaven
