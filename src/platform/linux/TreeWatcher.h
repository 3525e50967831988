#pragma once

#include "platform/TreeWalk.h"
#include "platform/linux/InotifyDescriptor.h"
#include "platform/linux/WatchTable.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Stemhaven {

/// Thrown where the system gives no more watches.
struct WatchLimitReached {
    std::string path;
};

/// Sets watches: on every folder of a tree that is not in a bundle, and in a bundle on what can change its
/// record. A folder is watched before it is read, so that nothing appears in it unseen.
class TreeWatcher {
public:
    /// What was known of a folder that is now watched.
    struct Arrival {
        enum Kind { New, StillThere, Moved } kind = New;

        /// Of what was moved: where it was seen last.
        std::string from = {};
    };

    /// Called for each bundle once it is watched, and for each other folder that was moved.
    using OnFound =
        std::function<void(const std::string& path, std::uint64_t fileID, const Arrival& arrival)>;

    /// stop ends a long walk early.
    TreeWatcher(const BundleNames& names, WatchTable& table, const std::atomic<bool>& stop);

    /// Where watches are set from now on. Those set before are gone.
    void use(InotifyDescriptor& descriptor);

    /// Folders that are not looked into from now on.
    void passOver(std::set<std::string> folders) { m_passedOver = std::move(folders); }

    /// Adds to what the folder is watched for already. Nothing when it cannot be watched, which has been
    /// logged if it means that something is missed.
    std::optional<Arrival> watch(const std::string& folder, unsigned purpose);
    void unwatch(const std::string& folder, unsigned purpose);

    /// Makes the table agree with the disk for the folder and all below it, or for a bundle: what is there is
    /// watched, what is not there any more is detached. Does the same whatever was in the table before.
    void watchTree(const std::string& top, const OnFound& onFound);

    void release(const std::string& path);
    /// What was detached and has not turned up for that long.
    void releaseGone(WatchTable::Clock::duration patience);

    /// Logs, but each path once only until it can be watched.
    void logUnreadable(const std::string& folder, int error);

private:
    void refuse(const std::string& folder, int error);
    /// Makes room in the table for a watch that the system has just given.
    std::optional<Arrival> admit(const std::string& folder, int descriptor);
    std::optional<Arrival> watchBundle(const std::string& bundle);
    /// For a watch that is not in the table.
    void drop(int descriptor);

    const BundleNames& m_names;
    WatchTable& m_table;
    InotifyDescriptor* m_descriptor = nullptr;
    const std::atomic<bool>& m_stop;
    std::set<std::string> m_passedOver;
    unsigned m_look = 0;
};

} // namespace Stemhaven
