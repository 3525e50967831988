#include "platform/linux/TreeWatcher.h"

#include "platform/linux/AlternativeFolders.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/FolderIdentity.h"
#include "platform/linux/LoggedFolders.h"
#include "platform/posix/PathText.h"

#include <QDebug>
#include <QFile>

#include <sys/inotify.h>

#include <cerrno>
#include <cstring>

namespace Stemhaven {

namespace {

constexpr unsigned partsWithoutID = WatchResources | WatchAlternatives | WatchAlternative;

std::uint32_t maskFor(unsigned purposes) {
    constexpr std::uint32_t names = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
    std::uint32_t mask = IN_ONLYDIR | IN_EXCL_UNLINK;
    if ((purposes & (WatchFolder | WatchStrayFolder)) != 0)
        mask |= names;
    // A folder that could not be read may become readable.
    if ((purposes & WatchFolder) != 0)
        mask |= IN_ATTRIB;
    if ((purposes & WatchBundlePart) != 0)
        mask |= names | IN_MODIFY | IN_CLOSE_WRITE;
    if ((purposes & WatchAncestor) != 0)
        mask |= IN_MOVED_FROM | IN_MOVED_TO;
    if ((purposes & WatchRootPath) != 0)
        mask |= IN_MOVE_SELF | IN_DELETE_SELF;
    if ((purposes & WatchForRoot) != 0)
        mask |= IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_MOVE_SELF | IN_DELETE_SELF;
    // The user may have named a root through a link; what lies in a tree is never followed.
    if ((purposes & (WatchRootPath | WatchForRoot | WatchAncestor)) == 0)
        mask |= IN_DONT_FOLLOW;
    return mask;
}

} // namespace

TreeWatcher::TreeWatcher(const BundleNames& names, WatchTable& table, const std::atomic<bool>& stop)
    : m_names(names),
      m_table(table),
      m_stop(stop) {}

void TreeWatcher::use(InotifyDescriptor& descriptor) {
    m_descriptor = &descriptor;
    m_table.clear();
}

std::optional<TreeWatcher::Arrival> TreeWatcher::watch(const std::string& folder, unsigned purpose) {
    const auto known = m_table.find(folder);
    const unsigned purposes = purpose | (known ? known.watch->purposes & ~WatchInTree : 0);
    const bool needsID = (purpose & ~partsWithoutID) != 0;
    const bool followLink = (maskFor(purposes) & IN_DONT_FOLLOW) == 0;
    const auto identity = needsID ? FolderIdentity::of(folder, followLink) : FolderIdentity{};
    // The folder may be watched at another path and for more than this.
    const int descriptor = m_descriptor->add(folder, maskFor(purposes) | IN_MASK_ADD);
    if (descriptor < 0) {
        refuse(folder, errno);
        return std::nullopt;
    }
    LoggedFolders::unreadable().remove(folder);
    if (needsID && FolderIdentity::of(folder, followLink) != identity) {
        // It is leaving in this very moment, and whether the watch is on it or on what takes its place is not
        // known. Events that are still to come say where each of them is.
        drop(descriptor);
        return std::nullopt;
    }
    auto arrival = admit(folder, descriptor);
    if (!arrival)
        return std::nullopt;

    if (arrival->kind == Arrival::New)
        m_table.put(folder, {descriptor, 0, 0});
    auto& watch = *m_table.find(folder).watch;
    if ((purpose & WatchInTree) != 0)
        watch.purposes &= ~WatchInTree;
    watch.purposes |= purposes;
    watch.look = m_look;
    if (needsID)
        watch.fileID = identity.inode;
    return arrival;
}

void TreeWatcher::unwatch(const std::string& folder, unsigned purpose) {
    const auto entry = m_table.find(folder);
    if (!entry)
        return;
    entry.watch->purposes &= ~purpose;
    if (entry.watch->purposes != 0)
        drop(m_descriptor->add(folder, maskFor(entry.watch->purposes)));
    else if (const auto descriptor = m_table.releaseOne(folder))
        m_descriptor->remove(*descriptor);
}

std::optional<TreeWatcher::Arrival> TreeWatcher::admit(const std::string& folder, int descriptor) {
    const auto atPath = m_table.find(folder);
    if (atPath && atPath.watch->descriptor == descriptor)
        return Arrival{Arrival::StillThere};
    const auto elsewhere = m_table.find(descriptor);
    // The folder can be reached at two paths, as through a bind mount: it stays where it was seen first.
    if (elsewhere && !WatchTable::isDetached(*elsewhere.path) &&
        FolderIdentity::of(*elsewhere.path) == FolderIdentity::of(folder))
        return std::nullopt;
    if (atPath || elsewhere)
        m_table.detach(folder);
    const auto before = m_table.find(descriptor);
    if (!before)
        return Arrival{};
    // It was moved, and its event may be still to come.
    const std::string path = *before.path;
    Arrival arrival{Arrival::Moved, m_table.seenAt(path)};
    m_table.noteFormer(path, {before.watch->fileID, descriptor});
    m_table.move(path, folder);
    return arrival;
}

void TreeWatcher::drop(int descriptor) {
    if (descriptor < 0 || m_table.find(descriptor))
        return;
    m_table.expectEventsOf(descriptor);
    m_descriptor->remove(descriptor);
}

void TreeWatcher::refuse(const std::string& folder, int error) {
    if (error == ENOSPC)
        throw WatchLimitReached{folder};
    // Gone again, or not a folder: its events say so.
    if (error != ENOENT && error != ENOTDIR && error != ELOOP)
        logUnreadable(folder, error);
}

void TreeWatcher::watchTree(const std::string& top, const OnFound& onFound) {
    ++m_look;
    std::string cameFrom = top;
    const auto note = [&](const std::string& path, const std::optional<Arrival>& arrival) {
        if (!arrival)
            return;
        if (path == top && arrival->kind == Arrival::Moved)
            cameFrom = arrival->from;
        if (arrival->kind == Arrival::Moved || m_names.isBundle(path))
            onFound(path, m_table.fileIDOf(path), *arrival);
    };
    TreeWalk walk;
    walk.enter = [&](const std::string& folder) {
        if (m_passedOver.contains(folder))
            return false;
        const auto arrival = watch(folder, WatchFolder);
        note(folder, arrival);
        return arrival.has_value();
    };
    walk.onBundle = [&](const std::string& bundle) {
        if (!m_passedOver.contains(bundle))
            note(bundle, watchBundle(bundle));
    };
    walk.isStopped = [this] {
        return m_stop.load();
    };
    walk.onUnreadable = [this](const std::string& folder, int error) {
        logUnreadable(folder, error);
    };

    if (m_names.isBundle(top))
        walk.onBundle(top);
    else
        walk.walk(top, m_names);
    // While the table was not up to date, other things than these may have happened below the folder.
    for (const auto& path : m_table.missedBy(m_look, top))
        m_table.detach(path, cameFrom + path.substr(top.size()));
}

std::optional<TreeWatcher::Arrival> TreeWatcher::watchBundle(const std::string& bundle) {
    auto arrival = watch(bundle, WatchBundle);
    if (!arrival)
        return arrival;
    watch(entryOf(bundle, BundleParts::resources), WatchResources);
    const std::string alternatives = entryOf(bundle, BundleParts::alternatives);
    if (watch(alternatives, WatchAlternatives)) {
        for (const auto& name : alternativesIn(alternatives))
            watch(entryOf(alternatives, name), WatchAlternative);
    }
    return arrival;
}

void TreeWatcher::release(const std::string& path) {
    for (const int descriptor : m_table.release(path))
        m_descriptor->remove(descriptor);
}

void TreeWatcher::releaseGone(WatchTable::Clock::duration patience) {
    for (const int descriptor : m_table.takeGone(patience))
        m_descriptor->remove(descriptor);
}

void TreeWatcher::logUnreadable(const std::string& folder, int error) {
    // A folder that was deleted meanwhile is nothing to speak of.
    if (error == ENOENT || !LoggedFolders::unreadable().add(folder))
        return;
    qWarning() << "Could not watch folder. Skipping: " << QFile::decodeName(folder.c_str())
               << QString::fromLocal8Bit(std::strerror(error)); // NOLINT(concurrency-mt-unsafe)
}

} // namespace Stemhaven
