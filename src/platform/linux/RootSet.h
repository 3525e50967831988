#pragma once

#include "platform/FileEventStream.h"
#include "platform/linux/EventCoalescer.h"
#include "platform/linux/FolderIdentity.h"
#include "platform/linux/InotifyCalls.h"
#include "platform/linux/MountTable.h"
#include "platform/linux/PolledFolders.h"
#include "platform/linux/TreeWatcher.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Stemhaven {

/// Keeps each root watched, or polled where it cannot be watched, and looks out for those that are missing.
///
/// A root is anything that is followed with all below it: a folder of the user's, or a single project
/// elsewhere. A remote file system that is mounted inside a local root is polled by itself. Nothing here asks
/// a remote file system, so that none can hold up the others. Everything but state() is called on the
/// stream's thread.
class RootSet {
public:
    using State = FileEventStream::RootState;

    struct Tools {
        InotifyCalls& calls;
        const BundleNames& names;
        WatchTable& table;
        TreeWatcher& watcher;
        EventCoalescer& events;
        EventClock& clock;
        PolledFolders& polled;
        EventTrace& trace;
        const decltype(FileWatchRequest::recordedTimes)& recordedTimes;
    };

    /// A root that is missing at first counts as missing since that moment.
    RootSet(std::vector<std::string> roots, std::uint64_t missingSince, Tools tools);

    /// Begins anew with all roots. With a moment, each bundle is reported that was changed since then or has
    /// another time than is recorded, and each root is to be searched.
    void begin(std::optional<std::uint64_t> since);

    bool contains(const std::string& path) const;
    /// Whether one is at path or below.
    bool hasAtOrBelow(const std::string& path) const;

    /// Something happened to a root or to a folder above one: finds out what.
    void check();
    /// The same after the folder that was at this path was itself moved, perhaps forth and back.
    void checkMoved(const std::string& path, std::uint64_t fileID);
    /// The same after something came to path or went away, which matters only if a root is there or below.
    void checkAt(const std::string& path);

    /// Something was mounted or unmounted.
    void checkMounts();

    /// The system gave no more watches for this path: its root is polled from now on, and what was changed
    /// since then is reported.
    void giveUpWatching(const std::string& path, std::uint64_t since);

    /// Takes what the polled folders have answered.
    void takeAnswers();

    /// Whether a folder that is moved could take a mount with it, of which the system says nothing.
    bool hasInnerMounts() const { return !m_innerMounts.empty(); }

    bool isRemote(const std::string& path) const { return !m_tools.calls.tellsEvents(path, m_mounts); }

    /// Of a path without a trailing "/". Safe from any thread.
    State state(const std::string& root) const;

private:
    struct Root {
        std::string path;
        State state = State::Missing;
        FolderIdentity identity;
        std::uint64_t lostAt = 0;
        bool isBeyondLimit = false;
    };

    WasMissed missedSince(std::optional<std::uint64_t> moment) const;
    void establish(Root& root, const WasMissed& wasMissed);
    void beginWatching(Root& root, const WasMissed& wasMissed);
    void pollLocally(Root& root, const WasMissed& wasMissed);
    void pollRemotely(Root& root, std::optional<std::uint64_t> since, bool needsSearch);
    TreeSnapshot::Subject subjectAt(const std::string& path) const;
    void beginInnerMounts(std::optional<std::uint64_t> since);
    std::set<std::string> findInnerMounts() const;
    void followMount(Root& root);
    bool holdsAnyOf(const Root& root, const std::vector<std::string>& mountPoints) const;
    void answered(const PolledFolders::Change& change);
    void lose(Root& root, std::uint32_t flags);
    void comeBack(Root& root);
    void setState(Root& root, State state);
    void search(const Root& root, std::uint32_t flags = 0);
    void lookOut();
    void watchAbove(const Root& root);
    void watchFor(const Root& root, std::set<std::string>& lookouts);
    void tryToWatch(const std::string& folder, unsigned purpose);
    void logLimit(const std::string& folder);

    Tools m_tools;
    std::vector<Root> m_roots;
    MountTable m_mounts;
    /// Where remote file systems are mounted inside local roots, not inside each other.
    std::set<std::string> m_innerMounts;
    /// Where roots that are missing are looked for.
    std::set<std::string> m_lookouts;
    bool m_isLimitLogged = false;
    mutable std::mutex m_statesMutex;
    std::map<std::string, State> m_states;
};

} // namespace Stemhaven
