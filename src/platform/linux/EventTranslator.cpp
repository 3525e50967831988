#include "platform/linux/EventTranslator.h"

#include "platform/linux/AlternativeFolders.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/FolderIdentity.h"
#include "platform/posix/PathText.h"

#include <sys/inotify.h>
#include <sys/stat.h>

#include <algorithm>

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

/// Whether a folder of that name is watched in a bundle's folder that is watched for these purposes.
bool isWatchedPart(unsigned purposes, const std::string& name) {
    if ((purposes & WatchBundle) != 0)
        return name == BundleParts::resources || name == BundleParts::alternatives;
    return (purposes & WatchAlternatives) != 0 && isAlternativeName(name);
}

bool isLink(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

} // namespace

bool EventTranslator::handle(const RawEvent& event) {
    const auto entry = m_tools.table.find(event.watch);
    m_tools.trace.noteSystemEvent(event, entry ? *entry.path : std::string());
    if ((event.mask & IN_Q_OVERFLOW) != 0)
        return false;
    if (!entry) {
        const bool isExpected = m_tools.table.isReleased(event.watch);
        if ((event.mask & IN_IGNORED) != 0)
            m_tools.table.forget(event.watch);
        return isExpected || (event.mask & IN_IGNORED) != 0;
    }
    const std::string folder = *entry.path;
    const unsigned purposes = entry.watch->purposes;
    if (WatchTable::isDetached(folder) && !event.name.empty()) {
        // Where it turns up, all that is in it is looked at.
        if ((purposes & WatchBundlePart) != 0 && flagsOf(event) != 0)
            entry.watch->isTouched = true;
        m_tools.table.takeFormer(entryOf(folder, event.name));
        return true;
    }
    if (event.name.empty()) {
        handleSelf(event, folder, purposes);
        return true;
    }
    const std::string path = entryOf(folder, event.name);
    if ((purposes & WatchBundlePart) != 0)
        handleInBundle(event, folder, purposes);
    else if ((purposes & WatchFolder) != 0)
        handleInTree(event, path);
    else if ((purposes & (WatchAncestor | WatchStrayFolder)) != 0)
        handleInAncestor(event, path);
    if ((purposes & WatchForRoot) != 0 && (event.mask & (IN_CREATE | IN_MOVED_TO | IN_ATTRIB)) != 0)
        m_tools.roots.checkAt(path);
    return true;
}

void EventTranslator::handleSelf(const RawEvent& event, const std::string& folder, unsigned purposes) {
    const auto fileID = m_tools.table.fileIDOf(folder);
    const bool isGone = (event.mask & IN_IGNORED) != 0;
    if (isGone)
        m_tools.table.forget(event.watch);
    if ((purposes & (WatchRootPath | WatchForRoot)) == 0)
        return;
    if ((event.mask & IN_MOVE_SELF) != 0) {
        const std::string place = m_tools.table.seenAt(folder);
        if (FolderIdentity::of(folder, true).inode != fileID && !WatchTable::isDetached(folder))
            m_tools.table.detach(folder);
        m_tools.roots.checkMoved(place, fileID);
    } else if (isGone || (event.mask & (IN_DELETE_SELF | IN_UNMOUNT)) != 0) {
        m_tools.roots.check();
    }
}

void EventTranslator::handleInBundle(const RawEvent& event, const std::string& folder, unsigned purposes) {
    constexpr std::uint32_t names = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;

    if (isFolder(event) && (event.mask & names) != 0 && isWatchedPart(purposes, event.name)) {
        const std::string bundle = (purposes & WatchBundle) != 0 ? folder : std::string(parentOf(folder));
        // When another one has taken its place, the events of both are still to come.
        if (FolderIdentity::of(bundle).inode == m_tools.table.fileIDOf(bundle))
            follow(bundle);
    }
    // A save replaces a file by another each time: for what it does to the bundle they are the same.
    const std::uint32_t flags = flagsOf(event);
    if (flags == 0)
        return;
    // However many other entries come there, they are one event.
    if ((purposes & WatchAlternatives) != 0 && !isAlternativeName(event.name))
        m_tools.events.add(folder, 0, FileEvent::ItemModified);
    else
        m_tools.events.add(entryOf(folder, event.name), 0, flags);
}

void EventTranslator::handleInTree(const RawEvent& event, const std::string& path) {
    const bool isBundle = m_tools.names.isBundle(path);
    const bool isOfInterest = isBundle || (isFolder(event) && !isHidden(path));
    // A folder that becomes hidden is out of sight: its old half stays alone. The walk passes over links, and
    // so do the events.
    const bool comes = (event.mask & (IN_CREATE | IN_MOVED_TO)) != 0;
    if (!isOfInterest || (comes && !isFolder(event) && isLink(path)))
        return;
    if ((event.mask & IN_CREATE) != 0)
        arrive(path, isFolder(event), FileEvent::ItemCreated);
    else if ((event.mask & IN_DELETE) != 0)
        disappear(path);
    else if ((event.mask & IN_MOVED_FROM) != 0)
        depart(path, event.cookie);
    else if ((event.mask & IN_MOVED_TO) != 0) {
        if (const auto old = m_moves.complete(event.cookie))
            arriveFrom(*old, path, isFolder(event));
        else
            arrive(path, isFolder(event), FileEvent::ItemRenamed | FileEvent::ItemCreated);
    } else if ((event.mask & IN_ATTRIB) != 0 && isFolder(event) && !m_tools.table.find(path)) {
        // It could not be watched before. If it can now, it is as good as new.
        arrive(path, true, FileEvent::ItemCreated);
    }
}

void EventTranslator::handleInAncestor(const RawEvent& event, const std::string& path) {
    if ((event.mask & IN_MOVED_TO) != 0) {
        if (const auto old = m_moves.complete(event.cookie))
            leaveTree(*old, path);
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

/// Something came to path that was not in sight before.
void EventTranslator::arrive(const std::string& path, bool isFolder, std::uint32_t flags) {
    const bool isNew = !isFolder || follow(path);
    // What is there now may be another one than came.
    m_tools.events.add(path, isNew ? m_tools.table.fileIDOf(path) : 0, flags);
    m_tools.roots.checkAt(path);
}

void EventTranslator::arriveFrom(const PendingMoves::OldHalf& old, const std::string& path, bool isFolder) {
    if (isFolder)
        follow(path);
    const auto fileID = m_tools.table.fileIDOf(path);
    if (fileID == 0 || (old.fileID != 0 && old.fileID != fileID)) {
        // It has gone on already, or cannot be watched.
        const bool isNew = old.fileID == 0 || changesKind(old.path, path);
        addRenamed(path, old.fileID, old.watch, isNew ? FileEvent::ItemCreated : 0U);
        m_tools.table.noteFormer(path, {old.fileID, old.watch});
    }
    // Report the current occupant of the path last.
    if (fileID != 0)
        m_tools.events.add(path, fileID, FileEvent::ItemRenamed);
    m_tools.roots.checkAt(path);
}

/// To a folder of which only the names are watched.
void EventTranslator::leaveTree(const PendingMoves::OldHalf& old, const std::string& path) {
    if (old.isAncestor)
        m_tools.watcher.watch(path, WatchAncestor);
    if (m_tools.names.isBundle(path))
        arriveFrom(old, path, true);
    else
        m_tools.events.add(path, old.fileID, FileEvent::ItemRenamed);
}

void EventTranslator::disappear(const std::string& path) {
    const auto [fileID, watch] = leave(path);
    // What has been found elsewhere is not what was deleted.
    const auto entry = m_tools.table.find(watch);
    const bool isElsewhere = entry && !WatchTable::isDetached(*entry.path);
    m_tools.events.add(path, isElsewhere && *entry.path != path ? 0 : fileID, FileEvent::ItemRemoved);
    m_tools.roots.checkAt(path);
}

void EventTranslator::depart(const std::string& path, std::uint32_t cookie) {
    const auto entry = m_tools.table.find(path);
    const bool isAncestor = entry && (entry.watch->purposes & WatchAncestor) != 0;
    const auto [fileID, watch] = leave(path);
    addRenamed(path, fileID, watch);
    m_moves.begin(cookie, {path, fileID, watch, isAncestor});
    if (m_tools.roots.hasAtOrBelow(path))
        m_tools.roots.checkMoved(path, fileID);
}

/// What was at path until now.
WatchTable::Former EventTranslator::leave(const std::string& path) {
    // What the table has there may be what came after it, and may be gone as well.
    const auto former = m_tools.table.takeFormer(path);
    const auto entry = m_tools.table.find(path);
    WatchTable::Former last;
    if (entry)
        last = {entry.watch->fileID, entry.watch->descriptor};
    if (FolderIdentity::of(path).inode != last.fileID)
        m_tools.table.detach(path);
    if (former)
        return *former;
    m_tools.table.takeFormer(path);
    return last;
}

/// One half of a move. A folder that has been found farther on already is reported there last.
void EventTranslator::addRenamed(
    const std::string& path, std::uint64_t fileID, int watch, std::uint32_t flags) {
    m_tools.events.add(path, fileID, FileEvent::ItemRenamed | flags);
    const auto entry = m_tools.table.find(watch);
    if (entry && !WatchTable::isDetached(*entry.path))
        m_tools.events.add(*entry.path, fileID, FileEvent::ItemRenamed);
}

bool EventTranslator::follow(const std::string& path) {
    using Arrival = TreeWatcher::Arrival;

    // Until it turns up.
    bool isNew = true;
    bool isBack = false;
    m_tools.watcher.watchTree(
        path, [&](const std::string& place, std::uint64_t fileID, const Arrival& arrival) {
            found(place, fileID, arrival);
            if (place == path) {
                // It was seen to leave, but not to come here.
                isBack = arrival.kind == Arrival::Moved && m_moves.isPending(fileID);
                isNew = isBack || arrival.kind == Arrival::New;
            }
            if (isBack && m_tools.names.isBundle(place))
                m_tools.events.add(place, fileID, FileEvent::ItemCreated);
        });
    return isNew;
}

void EventTranslator::found(
    const std::string& path, std::uint64_t fileID, const TreeWatcher::Arrival& arrival) {
    bool isNew = arrival.kind == TreeWatcher::Arrival::New;
    if (arrival.kind == TreeWatcher::Arrival::Moved) {
        m_tools.events.add(arrival.from, fileID, FileEvent::ItemRenamed);
        m_tools.events.carry(arrival.from, path, fileID);
        m_tools.events.add(path, fileID, FileEvent::ItemRenamed);
        for (const auto& place : m_tools.table.takeTouched(path))
            m_tools.events.add(place, m_tools.table.fileIDOf(place), FileEvent::ItemModified);
        isNew = changesKind(arrival.from, path);
    }
    if (isNew && m_tools.names.isBundle(path))
        m_tools.events.add(path, fileID, FileEvent::ItemCreated);
}

bool EventTranslator::changesKind(const std::string& from, const std::string& to) const {
    return m_tools.names.isBundle(from) != m_tools.names.isBundle(to);
}

void EventTranslator::settleMoves() {
    m_moves.forgetExpired();
    m_tools.watcher.releaseGone(PendingMoves::patience);
}

std::optional<PendingMoves::Clock::time_point> EventTranslator::nextSettling() const {
    const auto moves = m_moves.nextExpiry();
    const auto oldest = m_tools.table.oldestDetached();
    if (!oldest)
        return moves;
    const auto gone = *oldest + PendingMoves::patience;
    return moves ? std::min(*moves, gone) : gone;
}

} // namespace Stemhaven
