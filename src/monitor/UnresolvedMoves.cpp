#include "monitor/UnresolvedMoves.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

void UnresolvedMoves::startBatch() {
    constexpr std::chrono::seconds quietTime(4);
    const std::lock_guard lock(m_mutex);
    const auto now = Clock::now();
    if (!m_moves.isEmpty() && now - m_lastBatch >= quietTime) {
        qDebug() << "A while has passed without any project events. Cleaning up " << m_moves.size()
                 << " residual unresolved paths...";
        m_moves.clear();
    }
    m_lastBatch = now;
}

void UnresolvedMoves::add(const QList<EventBatch::Move>& moves) {
    const std::lock_guard lock(m_mutex);
    for (const auto& move : moves)
        m_moves[move.fileID].addEntry(move.path, move.eventID, move.fileID);
}

bool UnresolvedMoves::contains(unsigned long long fileID) const {
    const std::lock_guard lock(m_mutex);
    return m_moves.contains(fileID);
}

void UnresolvedMoves::remove(unsigned long long fileID) {
    const std::lock_guard lock(m_mutex);
    m_moves.remove(fileID);
}

void UnresolvedMoves::clear() {
    const std::lock_guard lock(m_mutex);
    m_moves.clear();
}

QList<ChangedPath> UnresolvedMoves::all() const {
    const std::lock_guard lock(m_mutex);
    return m_moves.values();
}

long long UnresolvedMoves::oldestEventID() const {
    long long oldest = -1;
    const auto moves = all();
    for (const auto& move : moves) {
        const auto id = move.getOldestEventID();
        if (id >= 0 && (oldest < 0 || id < oldest))
            oldest = id;
    }
    return oldest;
}

} // namespace Stemhaven
