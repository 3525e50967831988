#include "platform/linux/RootSet.h"

#include "platform/linux/LoggedFolders.h"
#include "platform/posix/PathText.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <fstream>
#include <utility>

namespace Stemhaven {

namespace {

/// File systems that round times do so to at most this many nanoseconds.
constexpr std::uint64_t coarsestTime = 2'000'000'000;

/// Whether the last change of a bundle was before it was read. Where the file system rounds times, or the
/// system's clock has ticked only once since, that is not known.
bool isReadAfter(const BundleStamp& stamp, std::int64_t readAt) {
    constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;
    constexpr std::uint64_t clockTick = 20'000'000;
    const bool isRounded = stamp.newest % nanosecondsPerSecond == 0;
    return readAt > 0 &&
        stamp.newest + (isRounded ? coarsestTime : clockTick) <= static_cast<std::uint64_t>(readAt);
}

std::string lowestExistingAbove(const std::string& path) {
    std::string folder(parentOf(path));
    while (!folder.empty() && !FolderIdentity::of(folder, true))
        folder = parentOf(folder);
    return folder;
}

} // namespace

RootSet::RootSet(std::vector<std::string> roots, std::uint64_t missingSince, Tools tools) : m_tools(tools) {
    for (auto& path : roots) {
        Root root;
        root.path = std::move(path);
        root.lostAt = missingSince;
        m_states[root.path] = State::Missing;
        m_roots.push_back(std::move(root));
    }
}

void RootSet::begin(std::optional<std::uint64_t> since) {
    m_mounts = MountTable::current();
    m_lookouts.clear();
    beginInnerMounts(since);
    for (auto& root : m_roots) {
        if (m_tools.polled.contains(root.path))
            continue;
        if (isRemote(root.path)) {
            pollRemotely(root, since, since.has_value());
        } else if (FolderIdentity::of(root.path, true)) {
            establish(root, missedSince(since));
            if (since)
                search(root);
        } else {
            setState(root, State::Missing);
        }
    }
    lookOut();
}

WasMissed RootSet::missedSince(std::optional<std::uint64_t> moment) const {
    if (!moment)
        return {};
    const std::uint64_t since = *moment - std::min(*moment, coarsestTime);
    return [since,
            &recordedTimes = m_tools.recordedTimes](const std::string& bundle, const BundleStamp& stamp) {
        const auto recorded = recordedTimes ? recordedTimes(QFile::decodeName(bundle.c_str())) : std::nullopt;
        // The clock may have been set back when it was saved.
        if (recorded && stamp.informationSeconds != 0 &&
            recorded->informationSeconds != stamp.informationSeconds)
            return true;
        return stamp.newest >= since && !(recorded && isReadAfter(stamp, recorded->readAt));
    };
}

/// For a root that is there and not remote.
void RootSet::establish(Root& root, const WasMissed& wasMissed) {
    root.identity = FolderIdentity::of(root.path, true);
    m_tools.polled.end(root.path);
    if (root.isBeyondLimit) {
        pollLocally(root, wasMissed);
        return;
    }
    try {
        beginWatching(root, wasMissed);
    } catch (const WatchLimitReached&) {
        m_tools.watcher.release(root.path);
        logLimit(root.path);
        root.isBeyondLimit = true;
        pollLocally(root, wasMissed);
    }
}

void RootSet::beginWatching(Root& root, const WasMissed& wasMissed) {
    m_tools.watcher.watch(root.path, WatchRootPath);
    m_tools.watcher.watchTree(
        root.path, [&](const std::string& bundle, std::uint64_t fileID, const TreeWatcher::Arrival&) {
            if (m_tools.names.isBundle(bundle) && wasMissed && wasMissed(bundle, BundleStamp::of(bundle)))
                m_tools.events.add(bundle, fileID, FileEvent::ItemModified);
        });
    LoggedFolders::polled().remove(root.path);
    LoggedFolders::beyondLimit().remove(root.path);
    // A root that cannot be read is as good as missing, and another one may have taken its place meanwhile.
    const auto entry = m_tools.table.find(root.path);
    const bool isWatched = entry && entry.watch->fileID == root.identity.inode;
    setState(root, isWatched ? State::Watched : State::Missing);
}

void RootSet::pollLocally(Root& root, const WasMissed& wasMissed) {
    auto subject = subjectAt(root.path);
    subject.passedOver = m_innerMounts;
    m_tools.polled.beginLocal(subject, wasMissed);
    setState(root, State::Polled);
}

void RootSet::pollRemotely(Root& root, std::optional<std::uint64_t> since, bool needsSearch) {
    // The first look comes later: what is changed until then shows by its time.
    const auto wasMissed = missedSince(since.value_or(m_tools.clock.wallTime()));
    m_tools.polled.beginRemote(subjectAt(root.path), wasMissed, needsSearch);
    setState(root, State::Polled);
}

TreeSnapshot::Subject RootSet::subjectAt(const std::string& path) const {
    return {path, m_tools.names, {}, m_mounts.find(path).mount};
}

void RootSet::answered(const PolledFolders::Change& change) {
    const auto found = std::find_if(
        m_roots.begin(), m_roots.end(), [&](const Root& root) { return root.path == change.folder; });
    if (found == m_roots.end()) {
        // A mount inside a root.
        if (change.needsSearch)
            m_tools.events.add(change.folder, change.fileID, FileEvent::MustScanSubDirs);
        return;
    }
    if (change.isThere)
        found->identity.inode = change.fileID;
    setState(*found, change.isThere ? State::Polled : State::Missing);
    if (change.needsSearch)
        search(*found);
}

void RootSet::takeAnswers() {
    m_tools.polled.takeAnswers([this](const PolledFolders::Change& change) { answered(change); });
}

bool RootSet::contains(const std::string& path) const {
    return std::any_of(m_roots.begin(), m_roots.end(), [&](const Root& root) { return root.path == path; });
}

bool RootSet::hasAtOrBelow(const std::string& path) const {
    return std::any_of(
        m_roots.begin(), m_roots.end(), [&](const Root& root) { return isAtOrBelow(root.path, path); });
}

void RootSet::check() {
    checkMoved({}, 0);
}

void RootSet::checkMoved(const std::string& path, std::uint64_t fileID) {
    for (auto& root : m_roots) {
        if (root.state != State::Watched)
            continue;
        const bool isElsewhere = FolderIdentity::of(root.path, true) != root.identity;
        const bool isItself = root.identity.inode == fileID;
        // While it was away, what was looked for there was not found, neither by us nor by those we told.
        const bool hasBeenAway = isItself || (!path.empty() && isAtOrBelow(root.path, path));
        if (isElsewhere || hasBeenAway || m_tools.table.fileIDOf(root.path) != root.identity.inode)
            lose(root, isElsewhere && isItself ? FileEvent::ItemRenamed : 0U);
    }
    lookOut();
}

void RootSet::checkAt(const std::string& path) {
    if (hasAtOrBelow(path))
        check();
}

void RootSet::checkMounts() {
    const MountTable before = std::exchange(m_mounts, MountTable::current());
    const auto changed = m_mounts.differences(before);
    if (changed.empty())
        return;
    beginInnerMounts(m_tools.clock.wallTime());
    for (auto& root : m_roots)
        followMount(root);
    check();
    for (auto& root : m_roots) {
        const bool isLocal =
            root.state == State::Watched || (root.isBeyondLimit && root.state == State::Polled);
        if (!isLocal || !holdsAnyOf(root, changed))
            continue;
        m_tools.watcher.release(root.path);
        establish(root, missedSince(m_tools.clock.wallTime()));
        search(root);
    }
    lookOut();
}

/// The mount that a root lies in may have been put there, taken away or replaced.
void RootSet::followMount(Root& root) {
    const bool isPolled = m_tools.polled.contains(root.path);
    const bool wasRemote = isPolled && !root.isBeyondLimit;
    if (!isRemote(root.path)) {
        if (!wasRemote)
            return;
        m_tools.polled.end(root.path);
        lose(root, 0);
    } else if (!wasRemote || m_tools.polled.mountOf(root.path) != m_mounts.find(root.path).mount) {
        m_tools.watcher.release(root.path);
        root.isBeyondLimit = false;
        pollRemotely(root, root.state == State::Missing ? root.lostAt : m_tools.clock.wallTime(), true);
    }
}

bool RootSet::holdsAnyOf(const Root& root, const std::vector<std::string>& mountPoints) const {
    const std::string inside = entryOf(m_mounts.find(root.path).path, "");
    return std::any_of(mountPoints.begin(), mountPoints.end(), [&](const std::string& point) {
        return point.starts_with(inside);
    });
}

/// Polls what is mounted inside local roots now, and nothing that was.
void RootSet::beginInnerMounts(std::optional<std::uint64_t> since) {
    auto found = findInnerMounts();
    for (const auto& mount : m_innerMounts) {
        if (!found.contains(mount) && !contains(mount))
            m_tools.polled.end(mount);
    }
    m_innerMounts = std::move(found);
    m_tools.watcher.passOver(m_innerMounts);
    const auto wasMissed = missedSince(since.value_or(m_tools.clock.wallTime()));
    for (const auto& mount : m_innerMounts) {
        const auto subject = subjectAt(mount);
        // A root at the same place is polled as that root.
        const bool isPolled =
            m_tools.polled.contains(mount) && m_tools.polled.mountOf(mount) == subject.mount;
        if (!isPolled && !contains(mount))
            m_tools.polled.beginRemote(subject, wasMissed, since.has_value());
    }
}

std::set<std::string> RootSet::findInnerMounts() const {
    std::set<std::string> found;
    for (const auto& root : m_roots) {
        const std::string top = m_mounts.find(root.path).path;
        if (isRemote(root.path))
            continue;
        std::string last;
        for (const auto& point : m_mounts.pointsBelow(top)) {
            const std::string path = root.path + point.substr(top.size());
            if ((last.empty() || !isAtOrBelow(path, last)) && isRemote(path)) {
                found.insert(path);
                last = path;
            }
        }
    }
    return found;
}

void RootSet::lose(Root& root, std::uint32_t flags) {
    m_tools.table.detach(root.path);
    setState(root, State::Missing);
    root.lostAt = m_tools.clock.wallTime();
    search(root, flags);
}

void RootSet::comeBack(Root& root) {
    if (isRemote(root.path)) {
        pollRemotely(root, root.lostAt, true);
        return;
    }
    establish(root, missedSince(root.lostAt));
    if (root.state == State::Missing)
        return;
    if (m_tools.names.isBundle(root.path))
        m_tools.events.add(root.path, root.identity.inode, FileEvent::ItemCreated);
    search(root);
}

void RootSet::giveUpWatching(const std::string& path, std::uint64_t since) {
    bool isInRoot = false;
    for (auto& root : m_roots) {
        if (root.state != State::Watched || !isAtOrBelow(path, root.path))
            continue;
        logLimit(root.path);
        m_tools.watcher.release(root.path);
        root.isBeyondLimit = true;
        pollLocally(root, missedSince(since));
        search(root);
        isInRoot = true;
    }
    // A folder above a project elsewhere.
    if (!isInRoot)
        logLimit(path);
    lookOut();
}

void RootSet::search(const Root& root, std::uint32_t flags) {
    // There is nothing to be found in a bundle.
    if (!m_tools.names.isBundle(root.path))
        flags |= FileEvent::MustScanSubDirs;
    if (flags != 0)
        m_tools.events.add(root.path, root.identity.inode, flags);
}

void RootSet::lookOut() {
    std::set<std::string> lookouts;
    for (auto& root : m_roots) {
        if (m_tools.polled.contains(root.path))
            continue;
        watchAbove(root);
        if (root.state != State::Missing)
            continue;
        watchFor(root, lookouts);
        FolderIdentity before;
        for (auto identity = FolderIdentity::of(root.path, true);
             root.state == State::Missing && identity && identity != before;
             identity = FolderIdentity::of(root.path, true)) {
            before = identity;
            comeBack(root);
        }
    }
    for (const auto& folder : m_lookouts) {
        if (!lookouts.contains(folder))
            m_tools.watcher.unwatch(folder, WatchForRoot);
    }
    m_lookouts = std::move(lookouts);
}

void RootSet::watchAbove(const Root& root) {
    for (std::string folder(parentOf(root.path)); !folder.empty(); folder = parentOf(folder)) {
        const auto entry = m_tools.table.find(folder);
        const bool isWatched = entry && (entry.watch->purposes & WatchRootPath) != 0;
        if (!isWatched && FolderIdentity::of(folder, true))
            tryToWatch(folder, WatchRootPath);
    }
}

void RootSet::watchFor(const Root& root, std::set<std::string>& lookouts) {
    std::string watched;
    // When a folder on the way appears before the one above is watched, that one is the wrong place to look.
    for (std::string lowest = lowestExistingAbove(root.path); !lowest.empty() && lowest != watched;
         lowest = lowestExistingAbove(root.path)) {
        tryToWatch(lowest, WatchForRoot);
        lookouts.insert(lowest);
        watched = lowest;
    }
}

void RootSet::tryToWatch(const std::string& folder, unsigned purpose) {
    try {
        m_tools.watcher.watch(folder, purpose);
    } catch (const WatchLimitReached&) {
        logLimit(folder);
    }
}

void RootSet::setState(Root& root, State state) {
    root.state = state;
    const std::lock_guard lock(m_statesMutex);
    m_states[root.path] = state;
}

RootSet::State RootSet::state(const std::string& root) const {
    const std::lock_guard lock(m_statesMutex);
    const auto found = m_states.find(root);
    return found == m_states.end() ? State::Missing : found->second;
}

void RootSet::logLimit(const std::string& folder) {
    if (!LoggedFolders::beyondLimit().add(folder) || std::exchange(m_isLimitLogged, true))
        return;
    constexpr std::uint64_t usualLimit = 524'288;
    std::uint64_t limit = 0;
    std::ifstream("/proc/sys/fs/inotify/max_user_watches") >> limit;
    const std::uint64_t better = std::max(usualLimit, 2 * limit);
    qWarning().noquote()
        << "The system's limit of watched folders is reached. Folders that do not fit are looked "
           "through every few seconds. To avoid it, raise the limit: sysctl fs.inotify.max_user_watches="
        << better;
    m_tools.trace.write(QStringLiteral("The limit of watched folders is reached."));
}

} // namespace Stemhaven
