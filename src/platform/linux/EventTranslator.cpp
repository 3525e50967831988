#include "platform/linux/EventTranslator.h"

#include "platform/linux/BundleStamp.h"
#include "platform/linux/FolderReading.h"
#include "platform/linux/PathText.h"

#include <sys/inotify.h>

namespace Stemhaven {

namespace {

std::uint32_t flagsOf(const RawEvent& event) {
    std::uint32_t flags = 0;
    if ((event.mask & IN_CREATE) != 0)
        flags |= FileEvent::ItemCreated;
    if ((event.mask & IN_DELETE) != 0)
        flags |= FileEvent::ItemRemoved;
    if ((event.mask & (IN_MOVED_FROM | IN_MOVED_TO)) != 0)
        flags |= FileEvent::ItemRenamed;
    if ((event.mask & (IN_MODIFY | IN_CLOSE_WRITE)) != 0)
        flags |= FileEvent::ItemModified;
    return flags;
}

bool isFolder(const RawEvent& event) {
    return (event.mask & IN_ISDIR) != 0;
}

} // namespace

bool EventTranslator::handle(const RawEvent& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0)
        return false;
    const auto entry = m_tools.table.find(event.watch);
    if (!entry) {
        const bool isExpected = m_tools.table.isReleased(event.watch);
        if ((event.mask & IN_IGNORED) != 0)
            m_tools.table.forget(event.watch);
        return isExpected || (event.mask & IN_IGNORED) != 0;
    }
    const std::string folder = *entry.path;
    const unsigned purposes = entry.watch->purposes;
    if (event.name.empty()) {
        handleSelf(event, folder, purposes);
        return true;
    }
    const std::string path = entryOf(folder, event.name);
    if ((purposes & WatchBundlePart) != 0)
        handleInBundle(event, path, purposes);
    else if ((purposes & WatchFolder) != 0)
        handleInTree(event, path);
    else if ((purposes & (WatchAncestor | WatchStrayFolder)) != 0)
        handleInAncestor(event, path);
    if ((purposes & WatchForRoot) != 0 && (event.mask & (IN_CREATE | IN_MOVED_TO | IN_ATTRIB)) != 0)
        m_tools.roots.checkAt(path);
    return true;
}

void EventTranslator::handleSelf(const RawEvent& event, const std::string& folder, unsigned purposes) {
    const bool isGone = (event.mask & IN_IGNORED) != 0;
    if (isGone)
        m_tools.table.forget(event.watch);
    if ((purposes & (WatchRootPath | WatchForRoot)) == 0)
        return;
    if ((event.mask & IN_MOVE_SELF) != 0) {
        // The table has followed a move within what is watched; after any other, this watch and those below
        // are on folders that are elsewhere.
        const auto entry = m_tools.table.find(folder);
        if (entry && FolderIdentity::of(folder, true).inode != entry.watch->fileID)
            m_tools.watcher.release(folder);
        m_tools.roots.checkMoved(folder);
    } else if (isGone || (event.mask & (IN_DELETE_SELF | IN_UNMOUNT)) != 0) {
        m_tools.roots.check();
    }
}

void EventTranslator::handleInBundle(const RawEvent& event, const std::string& path, unsigned purposes) {
    if (isFolder(event) && (event.mask & (IN_DELETE | IN_MOVED_FROM)) != 0)
        m_tools.watcher.release(path);
    if (isFolder(event) && (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) {
        if ((purposes & WatchBundle) != 0 && event.name == BundleParts::resources)
            m_tools.watcher.watch(path, WatchResources);
        else if ((purposes & WatchBundle) != 0 && event.name == BundleParts::alternatives)
            m_tools.watcher.watchAlternatives(path);
        else if ((purposes & WatchAlternatives) != 0)
            m_tools.watcher.watch(path, WatchAlternative);
    }
    // A save replaces a file by another each time: for what it does to the bundle they are the same.
    if (const std::uint32_t flags = flagsOf(event))
        m_tools.events.add(path, 0, flags);
}

void EventTranslator::handleInTree(const RawEvent& event, const std::string& path) {
    const bool isBundle = m_tools.names.isBundle(path);
    const bool isOfInterest = isBundle || (isFolder(event) && !isHidden(path));
    // A folder that becomes hidden is out of sight: its old half stays alone.
    if (!isOfInterest)
        return;
    if ((event.mask & IN_CREATE) != 0)
        appear(path, isFolder(event), FileEvent::ItemCreated);
    else if ((event.mask & IN_DELETE) != 0)
        disappear(path);
    else if ((event.mask & IN_MOVED_FROM) != 0)
        depart(path, event.cookie);
    else if ((event.mask & IN_MOVED_TO) != 0) {
        if (const auto old = m_moves.complete(event.cookie))
            arrive(path, isFolder(event), *old);
        else
            appear(path, isFolder(event), FileEvent::ItemRenamed | FileEvent::ItemCreated);
    } else if ((event.mask & IN_ATTRIB) != 0 && isFolder(event) && !m_tools.table.find(path)) {
        // It could not be watched before. If it can now, it is as good as new.
        appear(path, true, FileEvent::ItemCreated);
    }
}

void EventTranslator::handleInAncestor(const RawEvent& event, const std::string& path) {
    if ((event.mask & IN_MOVED_TO) != 0) {
        if (const auto old = m_moves.complete(event.cookie))
            leaveTree(path, *old);
        m_tools.roots.checkAt(path);
    } else if ((event.mask & IN_CREATE) != 0) {
        m_tools.roots.checkAt(path);
    } else if (m_tools.table.find(path) || m_tools.roots.contains(path)) {
        // What is deleted may have lost its watch before the folder above tells so.
        if ((event.mask & IN_MOVED_FROM) != 0)
            depart(path, event.cookie);
        else if ((event.mask & IN_DELETE) != 0)
            disappear(path);
    }
}

void EventTranslator::appear(const std::string& path, bool isFolder, std::uint32_t flags) {
    // Watched first: what is written into it from here on is told, and what was there before is seen below.
    if (isFolder) {
        m_tools.watcher.watchTree(path, [this](const std::string& bundle, std::uint64_t fileID, bool) {
            m_tools.events.add(bundle, fileID, FileEvent::ItemCreated);
        });
    }
    m_tools.events.add(path, m_tools.table.fileIDOf(path), flags);
    m_tools.roots.checkAt(path);
}

void EventTranslator::disappear(const std::string& path) {
    m_tools.events.add(path, m_tools.table.fileIDOf(path), FileEvent::ItemRemoved);
    // What was made in its place meanwhile may be watched already.
    const auto entry = m_tools.table.find(path);
    if (entry && FolderIdentity::of(path).inode != entry.watch->fileID)
        m_tools.watcher.release(path);
    m_tools.roots.checkAt(path);
}

void EventTranslator::depart(const std::string& path, std::uint32_t cookie) {
    const auto entry = m_tools.table.find(path);
    PendingMoves::OldHalf half{path, m_tools.table.fileIDOf(path), entry ? entry.watch->descriptor : -1};
    m_tools.events.add(path, half.fileID, FileEvent::ItemRenamed);
    m_moves.begin(cookie, std::move(half));
}

void EventTranslator::arrive(const std::string& path, bool isFolder, const PendingMoves::OldHalf& old) {
    const auto rootsBelow = m_tools.roots.leave(old.path);
    if (!follows(old, path)) {
        releaseOld(old);
        if (m_tools.names.isBundle(path) != m_tools.names.isBundle(old.path))
            m_tools.watcher.release(path);
        appear(path, isFolder, FileEvent::ItemRenamed | FileEvent::ItemCreated);
        return;
    }
    // An empty folder may have been replaced.
    m_tools.watcher.release(path);
    m_tools.table.move(old.path, path);
    m_tools.events.carry(old.path, path);
    m_tools.events.add(path, old.fileID, FileEvent::ItemRenamed);
    watchMoved(path);
    // Leaving its place, a project elsewhere has lost its watches.
    for (const auto& root : rootsBelow) {
        if (m_tools.names.isBundle(root))
            m_tools.watcher.watchBundle(path + root.substr(old.path.size()));
    }
    m_tools.roots.checkAt(path);
}

void EventTranslator::leaveTree(const std::string& path, const PendingMoves::OldHalf& old) {
    const auto entry = m_tools.table.find(old.path);
    const bool staysWatched =
        m_tools.names.isBundle(path) || (entry && (entry.watch->purposes & WatchAncestor) != 0);
    if (staysWatched) {
        arrive(path, true, old);
        return;
    }
    m_tools.roots.leave(old.path);
    releaseOld(old);
    m_tools.events.add(path, old.fileID, FileEvent::ItemRenamed);
}

/// Whether the watch of the old half is on the folder that is now at path, for the same purpose as before.
/// Two moves that swap folders, or a move and a folder made in its place, show only on the disk.
bool EventTranslator::follows(const PendingMoves::OldHalf& old, const std::string& path) {
    const auto entry = m_tools.table.find(old.path);
    if (!entry || entry.watch->descriptor != old.watch)
        return false;
    if (m_tools.names.isBundle(path) != m_tools.names.isBundle(old.path))
        return false;
    const auto there = FolderIdentity::of(path);
    return !there || there.inode == old.fileID;
}

void EventTranslator::releaseOld(const PendingMoves::OldHalf& old) {
    const auto entry = m_tools.table.find(old.path);
    if (entry && entry.watch->descriptor == old.watch && FolderIdentity::of(old.path).inode != old.fileID)
        m_tools.watcher.release(old.path);
}

/// While its watches were being set the folder may already have been on its way, so that some are missing or
/// are on what took its place.
void EventTranslator::watchMoved(const std::string& path) {
    const auto entry = m_tools.table.find(path);
    if (!entry || (entry.watch->purposes & (WatchFolder | WatchBundle)) == 0)
        return;
    m_tools.watcher.watchTree(path, [this](const std::string& bundle, std::uint64_t fileID, bool wasKnown) {
        if (!wasKnown)
            m_tools.events.add(bundle, fileID, FileEvent::ItemCreated);
    });
}

void EventTranslator::settleMoves() {
    for (const auto& old : m_moves.takeExpired(PendingMoves::Clock::now())) {
        m_tools.roots.leave(old.path);
        releaseOld(old);
    }
}

} // namespace Stemhaven
