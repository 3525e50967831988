#include "platform/linux/WatchSession.h"

#include "platform/linux/PathText.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace Stemhaven {

namespace {

std::string encoded(const QString& path) {
    std::string bytes = QFile::encodeName(path).toStdString();
    while (bytes.size() > 1 && bytes.ends_with('/'))
        bytes.pop_back();
    return bytes;
}

/// Projects elsewhere are kept like roots: watched, polled, and looked out for.
std::vector<std::string> rootsOf(const FileWatchRequest& request) {
    std::vector<std::string> roots;
    for (const auto& path : request.roots + request.strayBundles) {
        auto root = encoded(path);
        if (std::find(roots.begin(), roots.end(), root) == roots.end())
            roots.push_back(std::move(root));
    }
    return roots;
}

} // namespace

WatchSession::WatchSession(
    const FileWatchRequest& request, InotifyCalls& calls, std::chrono::milliseconds pollInterval,
    RawEventQueue& queue, const std::atomic<bool>& stop)
    : m_request(request),
      m_calls(calls),
      m_queue(queue),
      m_eventClock(EventClock::instance()),
      m_names(request.bundleSuffixes),
      m_watcher(m_names, m_table, stop),
      m_events(m_eventClock, request.latency),
      m_roots(
          rootsOf(request), pollInterval, replayStart().value_or(m_eventClock.wallTime()),
          {m_calls, m_names, m_table, m_watcher, m_events, m_eventClock, m_request.recordedTimes, stop}),
      m_translator({m_names, m_table, m_watcher, m_roots, m_events}) {}

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

bool WatchSession::openReader() {
    m_reader.reset();
    m_queue.clear();
    m_reader = std::make_unique<EventReader>(m_calls, m_queue);
    if (!m_reader->isRunning()) {
        qCritical() << "The system gives no file system events. If too many programs ask for them, raise "
                       "fs.inotify.max_user_instances."
                    << QString::fromLocal8Bit(std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
        return false;
    }
    m_watcher.use(m_reader->descriptor());
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
    for (const auto& path : m_request.ancestors) {
        const std::string ancestor = encoded(path);
        m_watcher.watch(ancestor, WatchAncestor);
        // Where an ancestor goes is told by the folder above.
        if (const std::string above(parentOf(ancestor)); !above.empty())
            m_watcher.watch(above, WatchAncestor);
    }
    for (const auto& path : m_request.strayBundles)
        m_watcher.watch(std::string(parentOf(encoded(path))), WatchStrayFolder);
}

void WatchSession::handle(const RawEventQueue::Taken& taken) {
    const std::uint64_t since = m_drainedAt;
    m_drainedAt = m_eventClock.wallTime();
    for (const auto& event : taken.events) {
        try {
            if (!m_translator.handle(event)) {
                recover(since);
                break;
            }
        } catch (const WatchLimitReached& limit) {
            m_roots.giveUpWatching(limit.path, since);
        }
    }
    if (taken.mountsChanged)
        m_roots.checkMounts();
}

/// Which watch stands for which folder is not known any more: begins with new ones. What was changed
/// meanwhile shows on the disk.
void WatchSession::recover(std::uint64_t since) {
    qWarning() << "File system events were lost. Looking at all folders again.";
    m_translator.forgetMoves();
    if (openReader())
        watchAll(since);
}

void WatchSession::tick() {
    m_translator.settleMoves();
    if (!m_translator.nextSettling())
        m_table.forgetFormer();
    m_roots.poll();
}

std::optional<WatchSession::Clock::time_point> WatchSession::deadline() const {
    std::optional<Clock::time_point> next;
    for (const auto& moment : {batchTime(), m_translator.nextSettling(), m_roots.nextPoll()}) {
        if (moment)
            next = next ? std::min(*next, *moment) : *moment;
    }
    return next;
}

std::optional<WatchSession::Clock::time_point> WatchSession::batchTime() const {
    using namespace std::chrono_literals;
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
