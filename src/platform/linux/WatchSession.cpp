#include "platform/linux/WatchSession.h"

#include "platform/posix/PathText.h"

#include <QDebug>
#include <QFile>

#include <sys/inotify.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Stemhaven {

namespace {

using namespace std::chrono_literals;

/// Between two attempts to begin anew.
constexpr WatchSession::Clock::duration shortestPause = 200ms;
constexpr WatchSession::Clock::duration longestPause = 60s;

std::string encoded(const QString& path) {
    std::string bytes = QFile::encodeName(path).toStdString();
    while (bytes.size() > 1 && bytes.ends_with('/'))
        bytes.pop_back();
    return bytes;
}

/// Stray bundles are kept like roots: watched, polled, and looked out for. A hidden one is passed over.
std::vector<std::string> rootsOf(const FileWatchRequest& request, const BundleNames& names) {
    std::vector<std::string> roots;
    const auto add = [&](std::string root) {
        if (std::find(roots.begin(), roots.end(), root) == roots.end())
            roots.push_back(std::move(root));
    };
    for (const auto& path : request.roots)
        add(encoded(path));
    for (const auto& path : request.strayBundles) {
        if (auto bundle = encoded(path); names.isBundle(bundle))
            add(std::move(bundle));
    }
    return roots;
}

} // namespace

WatchSession::WatchSession(
    const FileWatchRequest& request, InotifyCalls& calls, PolledFolders::Settings polling,
    RawEventQueue& queue, const std::atomic<bool>& stop)
    : m_request(request),
      m_calls(calls),
      m_queue(queue),
      m_eventClock(EventClock::instance()),
      m_names(request.bundleSuffixes),
      m_watcher(m_names, m_table, stop),
      m_events(m_eventClock, request.latency, &m_trace),
      m_polled(std::move(polling), m_events, stop, [&queue] { queue.wake(); }),
      m_roots(
          rootsOf(request, m_names), replayStart().value_or(m_eventClock.wallTime()),
          {m_calls, m_names, m_table, m_watcher, m_events, m_eventClock, m_polled, m_trace,
           m_request.recordedTimes}),
      m_translator({m_names, m_table, m_watcher, m_roots, m_events, m_trace}) {}

/// An id from the future is of a clock that was wrong, then or now: nothing that it excludes can be trusted.
std::optional<std::uint64_t> WatchSession::replayStart() const {
    if (m_request.sinceEventID == FileWatchRequest::sinceNow)
        return std::nullopt;
    return m_request.sinceEventID > m_eventClock.wallTime() ? 0 : m_request.sinceEventID;
}

bool WatchSession::begin() {
    if (!openReader())
        return false;
    if (m_request.sinceEventID != FileWatchRequest::sinceNow)
        m_eventClock.passBeyond(m_request.sinceEventID);
    m_drainedAt = m_eventClock.wallTime();
    watchAll(replayStart());
    return true;
}

std::uint64_t WatchSession::end() {
    const auto now = m_eventClock.wallTime();
    // A folder that is polled may have changed since the last look at it.
    bool isAllTold = m_reader && m_polled.isEmpty() && !m_lostSince && !deadline();
    m_polled.endAll();
    if (m_reader) {
        m_reader->stop();
        isAllTold = isAllTold && !m_reader->descriptor().hasUnread() && m_queue.isEmpty();
    }
    m_reader.reset();
    return isAllTold ? now : 0;
}

bool WatchSession::openReader() {
    auto reader = std::make_unique<EventReader>(m_calls, m_queue);
    if (!reader->isOpen()) {
        qCritical() << "The system gives no file system events. If too many programs ask for them, raise "
                       "fs.inotify.max_user_instances."
                    << QString::fromLocal8Bit(std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
        return false;
    }
    m_reader.reset();
    m_queue.clear();
    m_reader = std::move(reader);
    m_watcher.use(m_reader->descriptor());
    m_reader->start();
    return true;
}

void WatchSession::watchAll(std::optional<std::uint64_t> since) {
    m_roots.begin(since);
    try {
        watchAncestors();
    } catch (const WatchLimitReached& limit) {
        m_roots.giveUpWatching(limit.path, m_drainedAt);
    }
}

void WatchSession::watchAncestors() {
    const auto watch = [this](const std::string& folder, unsigned purpose) {
        if (!folder.empty() && !m_roots.isRemote(folder))
            m_watcher.watch(folder, purpose);
    };
    for (const auto& path : m_request.ancestors) {
        const std::string ancestor = encoded(path);
        watch(ancestor, WatchAncestor);
        // Where an ancestor goes is told by the folder above.
        watch(std::string(parentOf(ancestor)), WatchAncestor);
    }
    for (const auto& path : m_request.strayBundles)
        watch(std::string(parentOf(encoded(path))), WatchStrayFolder);
}

void WatchSession::handle(const RawEventQueue::Taken& taken) {
    const std::uint64_t now = m_eventClock.wallTime();
    // A mount moves along with the folder that it is in, of which the mount table says nothing.
    const bool mayMoveMounts = m_roots.hasInnerMounts() &&
        std::any_of(taken.events.begin(), taken.events.end(), [](const RawEvent& event) {
                                   return (event.mask & (IN_ISDIR | IN_MOVED_TO)) == (IN_ISDIR | IN_MOVED_TO);
                               });
    if (mayMoveMounts)
        m_roots.checkMounts();
    // When it begins anew, the events that come until then are of watches that will be gone.
    if (!m_lostSince)
        handleEvents(taken.events);
    if (!taken.failure.empty() && !m_lostSince)
        beginAnew(
            QStringLiteral("File system events cannot be read: ") + QString::fromStdString(taken.failure));
    if (taken.mountsChanged)
        m_roots.checkMounts();
    m_drainedAt = now;
}

void WatchSession::handleEvents(const std::vector<RawEvent>& events) {
    for (const auto& event : events) {
        try {
            if (!m_translator.handle(event)) {
                beginAnew(QStringLiteral("File system events were lost."));
                return;
            }
        } catch (const WatchLimitReached& limit) {
            m_roots.giveUpWatching(limit.path, m_drainedAt);
        }
    }
}

void WatchSession::beginAnew(const QString& reason) {
    if (!m_lostSince)
        m_lostSince = m_drainedAt;
    m_trace.write(reason);
}

/// What was changed since events were lost shows on the disk.
void WatchSession::recover() {
    // What fails again and again must not keep the disk busy.
    const auto now = Clock::now();
    const bool isRepeated = now < m_nextRecovery + m_recoveryPause;
    m_recoveryPause =
        isRepeated ? std::min<Clock::duration>(2 * m_recoveryPause, longestPause) : shortestPause;
    m_nextRecovery = now + m_recoveryPause;
    if (!openReader())
        return;
    qWarning() << "File system events were lost. Looking at all folders again.";
    m_translator.forgetMoves();
    watchAll(m_lostSince);
    m_lostSince.reset();
}

void WatchSession::tick() {
    if (m_lostSince && m_nextRecovery <= Clock::now())
        recover();
    m_translator.settleMoves();
    if (!m_translator.nextSettling())
        m_table.forgetFormer();
    m_roots.takeAnswers();
}

std::optional<WatchSession::Clock::time_point> WatchSession::deadline() const {
    std::optional<Clock::time_point> next;
    const auto recovery = m_lostSince ? std::optional(m_nextRecovery) : std::nullopt;
    for (const auto& moment : {batchTime(), m_translator.nextSettling(), m_polled.deadline(), recovery}) {
        if (moment)
            next = next ? std::min(*next, *moment) : *moment;
    }
    return next;
}

std::optional<WatchSession::Clock::time_point> WatchSession::batchTime() const {
    // A batch waits for the second half of a rename, but not for ever when one comes after the other.
    constexpr auto patience = 1s;

    const auto due = m_events.due();
    const auto settling = m_translator.nextSettling();
    if (!due || !settling)
        return due;
    return std::clamp(*settling, *due, *due + patience);
}

QList<FileEvent> WatchSession::takeDue() {
    const auto moment = batchTime();
    if (!moment || *moment > Clock::now())
        return {};
    return m_events.take();
}

} // namespace Stemhaven
