#pragma once

#include "platform/TreeWalk.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/EventCoalescer.h"
#include "platform/linux/FolderIdentity.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace Stemhaven {

/// The bundles in a tree at one moment. Two of them tell what changed in between.
struct TreeSnapshot {
    struct Bundle {
        std::uint64_t fileID = 0;
        BundleStamp stamp;
    };

    /// What a snapshot is taken of.
    struct Subject {
        /// A folder, or a bundle.
        std::string top;
        BundleNames names;
        /// Folders below the top that are not looked into.
        std::set<std::string> passedOver = {};
        /// The mount that the top lies in: see MountTable::Place.
        int mount = 0;
    };

    using IsStopped = std::function<bool()>;
    /// How a snapshot is taken: a test hands in one that does not answer. Called on several threads.
    using Taker = std::function<std::optional<TreeSnapshot>(const Subject&, const IsStopped&)>;

    /// Nothing when the top is not there, cannot be read or was replaced meanwhile, or when the look was
    /// stopped.
    static std::optional<TreeSnapshot> take(const Subject& subject, const IsStopped& isStopped);

    /// Adds an event for each bundle that has come, gone, moved or changed since the earlier snapshot.
    void reportChanges(const TreeSnapshot& earlier, EventCoalescer& events) const;

    FolderIdentity identity;
    std::map<std::string, Bundle> bundles;
};

} // namespace Stemhaven
