#pragma once

#include "platform/linux/EventCoalescer.h"
#include "platform/linux/TreePoller.h"
#include "platform/linux/TreeSnapshot.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace Stemhaven {

/// Whether a bundle was changed while nobody watched it. Empty where that is not asked.
using WasMissed = std::function<bool(const std::string& bundle, const BundleStamp& stamp)>;

/// The folders whose events the system does not tell: reports what changed in them from one look to the next.
/// A folder that does not answer holds up none of the others. For one thread.
class PolledFolders {
public:
    using Clock = TreePoller::Clock;

    struct Settings {
        std::chrono::milliseconds interval{5000};
        /// A folder that has not answered for that long counts as missing.
        std::chrono::milliseconds patience{5000};
        TreeSnapshot::Taker take = &TreeSnapshot::take;
    };

    struct Change {
        std::string folder;
        bool isThere = false;
        /// The inode of the folder, 0 when it is missing.
        std::uint64_t fileID = 0;
        /// What lies in it may have changed without being told.
        bool needsSearch = false;
    };

    using OnChange = std::function<void(const Change& change)>;

    /// onAnswer is called on other threads when takeAnswers() has something to take.
    PolledFolders(
        Settings settings, EventCoalescer& events, const std::atomic<bool>& stop,
        std::function<void()> onAnswer);

    /// Reads a local folder at once, and reports what was missed.
    void beginLocal(const TreeSnapshot::Subject& subject, const WasMissed& wasMissed);
    /// Asks for nothing here, so that it does not wait: the folder counts as there until an answer says
    /// otherwise. The first answer is reported like a folder that comes back.
    void beginRemote(const TreeSnapshot::Subject& subject, const WasMissed& wasMissed, bool needsSearch);

    void end(const std::string& folder) { m_folders.erase(folder); }

    void endAll() { m_folders.clear(); }

    bool isEmpty() const { return m_folders.empty(); }

    bool contains(const std::string& folder) const { return m_folders.contains(folder); }

    /// In which the folder was when its polling began; it must be polled.
    int mountOf(const std::string& folder) const { return m_folders.at(folder).poller->mount(); }

    /// Reports what has changed. Calls back for each folder that has come, gone or stopped answering.
    void takeAnswers(const OnChange& onChange);

    /// When a folder will have gone without an answer for too long.
    std::optional<Clock::time_point> deadline() const;

private:
    struct Folder {
        std::unique_ptr<TreePoller> poller;
        std::optional<TreeSnapshot> last;
        WasMissed wasMissed;
        bool isThere = true;
        bool isOverdue = false;
        bool hasAnswered = false;
        bool needsSearch = false;
    };

    void reportMissed(const Folder& folder);
    void take(const std::string& path, Folder& folder, TreePoller::Answer answer, const OnChange& onChange);
    void checkOverdue(const std::string& path, Folder& folder, const OnChange& onChange) const;

    const Settings m_settings;
    EventCoalescer& m_events;
    const std::atomic<bool>& m_stop;
    const std::function<void()> m_onAnswer;
    std::map<std::string, Folder> m_folders;
};

} // namespace Stemhaven
