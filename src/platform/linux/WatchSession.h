#pragma once

#include "platform/FileEventStream.h"
#include "platform/TreeWalk.h"
#include "platform/linux/EventCoalescer.h"
#include "platform/linux/EventReader.h"
#include "platform/linux/EventTranslator.h"
#include "platform/linux/PolledFolders.h"
#include "platform/linux/RawEventQueue.h"
#include "platform/linux/RootSet.h"
#include "platform/linux/TreeWatcher.h"
#include "platform/linux/WatchTable.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Stemhaven {

/// What a stream knows while it runs, from the descriptor to the batches. For one thread, state() excepted.
class WatchSession {
public:
    using Clock = std::chrono::steady_clock;

    /// stop ends long walks early.
    WatchSession(
        const FileWatchRequest& request, InotifyCalls& calls, PolledFolders::Settings polling,
        RawEventQueue& queue, const std::atomic<bool>& stop);

    /// Sets the watches and replays. False when the system has no descriptor to give.
    bool begin();

    void handle(const RawEventQueue::Taken& taken);

    /// Something went wrong, so that what the system's events mean is not known any more: has tick() begin
    /// anew.
    void beginAnew(const QString& reason);

    /// Does what is due without an event.
    void tick();

    /// When to call tick() or takeDue() if nothing happens before.
    std::optional<Clock::time_point> deadline() const;

    /// The batch, if it is time for one; empty otherwise.
    QList<FileEvent> takeDue();

    /// Gives back what the system lent. Nothing but state() may follow. Returns an id up to which everything
    /// has been told, 0 where something has not.
    std::uint64_t end();

    RootSet::State state(const std::string& root) const { return m_roots.state(root); }

private:
    /// Keeps the one before when the system refuses.
    bool openReader();
    void watchAll(std::optional<std::uint64_t> since);
    void watchAncestors();
    void handleEvents(const std::vector<RawEvent>& events);
    void recover();
    std::optional<std::uint64_t> replayStart() const;
    std::optional<Clock::time_point> batchTime() const;

    const FileWatchRequest m_request;
    InotifyCalls& m_calls;
    RawEventQueue& m_queue;
    EventClock& m_eventClock;
    BundleNames m_names;
    WatchTable m_table;
    TreeWatcher m_watcher;
    EventTrace m_trace;
    EventCoalescer m_events;
    PolledFolders m_polled;
    RootSet m_roots;
    EventTranslator m_translator;
    std::unique_ptr<EventReader> m_reader;
    /// Events that come to be lost happened after this moment.
    std::uint64_t m_drainedAt = 0;
    /// Since when events are lost; nothing while none are.
    std::optional<std::uint64_t> m_lostSince;
    Clock::time_point m_nextRecovery;
    Clock::duration m_recoveryPause{};
};

} // namespace Stemhaven
