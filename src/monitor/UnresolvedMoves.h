#pragma once

#include "monitor/ChangedPath.h"
#include "monitor/EventFilter.h"

#include <QList>
#include <QMap>

#include <chrono>
#include <mutex>

namespace Stemhaven {

/// The moves and renames that have been seen and not yet been written. Safe from any thread.
class UnresolvedMoves {
public:
    using Clock = std::chrono::steady_clock;

    /// A batch of events has come. Drops what has waited through a quiet time: its other half will not come
    /// any more.
    void startBatch();

    void add(const QList<EventBatch::Move>& moves);
    bool contains(unsigned long long fileID) const;
    void remove(unsigned long long fileID);
    void clear();

    QList<ChangedPath> all() const;
    /// The id of the oldest event among them, -1 when there are none.
    long long oldestEventID() const;

private:
    mutable std::mutex m_mutex;
    QMap<unsigned long long, ChangedPath> m_moves; // by file id
    Clock::time_point m_lastBatch = Clock::now();
};

} // namespace Stemhaven
