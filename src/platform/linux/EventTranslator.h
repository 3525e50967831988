#pragma once

#include "platform/linux/BundleNames.h"
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
    };

    explicit EventTranslator(Tools tools) : m_tools(tools) {}

    /// False when it shows that events were lost.
    bool handle(const RawEvent& event);

    /// Takes the old halves of moves that wait for too long as moved out of sight.
    void settleMoves();

    std::optional<PendingMoves::Clock::time_point> nextSettling() const { return m_moves.nextExpiry(); }

    void forgetMoves() { m_moves.clear(); }

private:
    void handleSelf(const RawEvent& event, const std::string& folder, unsigned purposes);
    void handleInBundle(const RawEvent& event, const std::string& path, unsigned purposes);
    void handleInTree(const RawEvent& event, const std::string& path);
    void handleInAncestor(const RawEvent& event, const std::string& path);

    void appear(const std::string& path, bool isFolder, std::uint32_t flags);
    void disappear(const std::string& path);
    void depart(const std::string& path, std::uint32_t cookie);
    void arrive(const std::string& path, bool isFolder, const PendingMoves::OldHalf& old);
    void leaveTree(const std::string& path, const PendingMoves::OldHalf& old);
    bool follows(const PendingMoves::OldHalf& old, const std::string& path);
    void releaseOld(const PendingMoves::OldHalf& old);
    void watchMoved(const std::string& path);

    Tools m_tools;
    PendingMoves m_moves;
};

} // namespace Stemhaven
