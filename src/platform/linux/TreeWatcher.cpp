#include "platform/linux/TreeWatcher.h"

#include "platform/linux/BundleStamp.h"
#include "platform/linux/FolderReading.h"
#include "platform/linux/LoggedFolders.h"
#include "platform/linux/PathText.h"

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

bool TreeWatcher::watch(const std::string& folder, unsigned purpose) {
    const auto known = m_table.find(folder);
    const unsigned purposes = purpose | (known ? known.watch->purposes : 0);
    const bool needsID = (purpose & ~partsWithoutID) != 0;
    const bool followLink = (maskFor(purposes) & IN_DONT_FOLLOW) == 0;
    const auto identity = needsID ? FolderIdentity::of(folder, followLink) : FolderIdentity{};
    const int descriptor = m_descriptor->add(folder, maskFor(purposes));
    if (descriptor < 0)
        return refuse(folder, errno);
    LoggedFolders::unreadable().remove(folder);
    if (needsID && FolderIdentity::of(folder, followLink) != identity) {
        // It is leaving in this very moment, and whether the watch is on it or on what takes its place is not
        // known. Events that are still to come say where each of them is.
        if (!m_table.find(descriptor)) {
            m_table.expectEventsOf(descriptor);
            m_descriptor->remove(descriptor);
        }
        return false;
    }
    if (!admit(folder, descriptor))
        return false;

    const auto entry = m_table.find(folder);
    if (entry)
        entry.watch->purposes |= purpose;
    else
        m_table.put(folder, {descriptor, purposes, 0});
    if (needsID)
        m_table.find(folder).watch->fileID = identity.inode;
    return true;
}

void TreeWatcher::unwatch(const std::string& folder, unsigned purpose) {
    const auto entry = m_table.find(folder);
    if (!entry)
        return;
    entry.watch->purposes &= ~purpose;
    if (entry.watch->purposes != 0)
        m_descriptor->add(folder, maskFor(entry.watch->purposes));
    else if (const auto descriptor = m_table.releaseOne(folder))
        m_descriptor->remove(*descriptor);
}

bool TreeWatcher::admit(const std::string& folder, int descriptor) {
    const auto atPath = m_table.find(folder);
    if (atPath && atPath.watch->descriptor != descriptor)
        release(folder);
    const auto elsewhere = m_table.find(descriptor);
    if (!elsewhere || *elsewhere.path == folder)
        return true;
    const std::string path = *elsewhere.path;
    // The folder can be reached at two paths, as through a bind mount: it stays where it was seen first.
    if (FolderIdentity::of(path) == FolderIdentity::of(folder))
        return false;
    // It was moved, and its event is still to come.
    m_table.move(path, folder);
    return true;
}

bool TreeWatcher::refuse(const std::string& folder, int error) {
    if (error == ENOSPC)
        throw WatchLimitReached{folder};
    // Gone again, or not a folder: its events say so.
    if (error != ENOENT && error != ENOTDIR && error != ELOOP)
        logUnreadable(folder, error);
    return false;
}

void TreeWatcher::watchTree(const std::string& top, const OnBundle& onBundle) {
    TreeWalk walk;
    walk.enter = [this](const std::string& folder) {
        return !m_stop && watch(folder, WatchFolder);
    };
    walk.onBundle = [&](const std::string& bundle) {
        if (m_stop)
            return;
        const bool wasKnown = static_cast<bool>(m_table.find(bundle));
        watchBundle(bundle);
        onBundle(bundle, m_table.fileIDOf(bundle), wasKnown);
    };
    walk.onUnreadable = [this](const std::string& folder, int error) {
        logUnreadable(folder, error);
    };

    if (m_names.isBundle(top))
        walk.onBundle(top);
    else
        walk.walk(top, m_names);
}

void TreeWatcher::watchBundle(const std::string& bundle) {
    if (!watch(bundle, WatchBundle))
        return;
    watch(entryOf(bundle, BundleParts::resources), WatchResources);
    watchAlternatives(entryOf(bundle, BundleParts::alternatives));
}

void TreeWatcher::watchAlternatives(const std::string& folder) {
    if (!watch(folder, WatchAlternatives))
        return;
    readFolders(folder, [&](const std::string& name) { watch(entryOf(folder, name), WatchAlternative); });
}

void TreeWatcher::release(const std::string& path) {
    for (const int descriptor : m_table.release(path))
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
