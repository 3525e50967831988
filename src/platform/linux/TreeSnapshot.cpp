#include "platform/linux/TreeSnapshot.h"

#include <utility>

namespace Stemhaven {

std::optional<TreeSnapshot> TreeSnapshot::take(const Subject& subject, const IsStopped& isStopped) {
    TreeSnapshot snapshot;
    snapshot.identity = FolderIdentity::of(subject.top, true);
    bool isReadable = static_cast<bool>(snapshot.identity);
    TreeWalk walk;
    walk.enter = [&](const std::string& folder) {
        return !subject.passedOver.contains(folder);
    };
    std::map<std::uint64_t, std::string> pathOf;
    walk.onBundle = [&](const std::string& bundle) {
        if (subject.passedOver.contains(bundle))
            return;
        const auto fileID = FolderIdentity::of(bundle).inode;
        // Moved on since its folder was listed.
        if (fileID == 0)
            return;
        // One that moved during the look is found at both places.
        const auto earlier = std::exchange(pathOf[fileID], bundle);
        if (!earlier.empty() && FolderIdentity::of(earlier).inode != fileID)
            snapshot.bundles.erase(earlier);
        snapshot.bundles[bundle] = {fileID, BundleStamp::of(bundle)};
    };
    walk.onUnreadable = [&](const std::string& folder, int) {
        isReadable = isReadable && folder != subject.top;
    };
    walk.isStopped = isStopped;
    if (isReadable && subject.names.isBundle(subject.top))
        walk.onBundle(subject.top);
    else if (isReadable)
        walk.walk(subject.top, subject.names);
    // Unmounted during the look, the folder would seem to have lost its bundles.
    const bool isSameFolder = FolderIdentity::of(subject.top, true) == snapshot.identity;
    if (!isReadable || !isSameFolder || isStopped())
        return std::nullopt;
    return snapshot;
}

void TreeSnapshot::reportChanges(const TreeSnapshot& earlier, EventCoalescer& events) const {
    std::map<std::uint64_t, std::string> gone;
    for (const auto& [path, bundle] : earlier.bundles) {
        if (!bundles.contains(path))
            gone[bundle.fileID] = path;
    }
    for (const auto& [path, bundle] : bundles) {
        const auto before = earlier.bundles.find(path);
        if (before == earlier.bundles.end()) {
            const auto old = gone.extract(bundle.fileID);
            if (!old.empty())
                events.add(old.mapped(), bundle.fileID, FileEvent::ItemRenamed);
            events.add(
                path, bundle.fileID,
                old.empty() ? FileEvent::ItemCreated : FileEvent::ItemRenamed | FileEvent::ItemModified);
        } else if (before->second.stamp != bundle.stamp || before->second.fileID != bundle.fileID) {
            events.add(path, bundle.fileID, FileEvent::ItemModified);
        }
    }
    for (const auto& [fileID, path] : gone)
        events.add(path, fileID, FileEvent::ItemRemoved);
}

} // namespace Stemhaven
