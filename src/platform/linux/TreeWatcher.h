#pragma once

#include "platform/linux/BundleNames.h"
#include "platform/linux/InotifyDescriptor.h"
#include "platform/linux/WatchTable.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace Stemhaven {

/// Thrown where the system gives no more watches.
struct WatchLimitReached {
    std::string path;
};

/// Sets watches: on every folder of a tree that is not in a bundle, and in a bundle on what can change its
/// record. A folder is watched before it is read, so that nothing appears in it unseen.
class TreeWatcher {
public:
    /// Called for each bundle once it is watched, with whether it was watched before.
    using OnBundle = std::function<void(const std::string& bundle, std::uint64_t fileID, bool wasKnown)>;

    /// stop ends a long walk early.
    TreeWatcher(const BundleNames& names, WatchTable& table, const std::atomic<bool>& stop);

    /// Where watches are set from now on. Those set before are gone.
    void use(InotifyDescriptor& descriptor);

    /// Adds to what the folder is watched for already. False when it cannot be watched, which has been logged
    /// if it means that something is missed.
    bool watch(const std::string& folder, unsigned purpose);
    void unwatch(const std::string& folder, unsigned purpose);

    /// The folder and all below it, or a bundle.
    void watchTree(const std::string& top, const OnBundle& onBundle);
    void watchBundle(const std::string& bundle);
    void watchAlternatives(const std::string& folder);

    void release(const std::string& path);

    /// Logs, but each path once only until it can be watched.
    void logUnreadable(const std::string& folder, int error);

private:
    bool refuse(const std::string& folder, int error);
    /// Makes room in the table for a watch that the system has just given.
    bool admit(const std::string& folder, int descriptor);

    const BundleNames& m_names;
    WatchTable& m_table;
    InotifyDescriptor* m_descriptor = nullptr;
    const std::atomic<bool>& m_stop;
};

} // namespace Stemhaven
