#include "platform/linux/EventCoalescer.h"

#include "platform/posix/PathText.h"

#include <QFile>

#include <algorithm>
#include <vector>

namespace Stemhaven {

using namespace std::chrono_literals;

namespace {

/// Long enough for both halves of a rename, or for the files of one save, to come together.
constexpr auto promptness = 100ms;

} // namespace

EventCoalescer::EventCoalescer(EventClock& eventClock, std::chrono::milliseconds latency, EventTrace* trace)
    : m_eventClock(eventClock),
      m_latency(latency),
      m_trace(trace) {}

void EventCoalescer::add(const std::string& path, std::uint64_t fileID, std::uint32_t flags) {
    if (m_waiting.empty())
        m_firstWaiting = Clock::now();
    auto& waiting = m_waiting[{path, fileID}];
    waiting.flags |= flags;
    waiting.eventID = m_eventClock.next();
    if (m_trace != nullptr)
        m_trace->noteFileEvent(path, fileID, flags, waiting.eventID);
}

void EventCoalescer::carry(const std::string& from, const std::string& to, std::uint64_t fileID) {
    constexpr std::uint32_t carried = FileEvent::ItemCreated | FileEvent::ItemModified;

    std::vector<std::pair<Key, std::uint32_t>> moved;
    for (auto it = m_waiting.lower_bound({from, 0}); it != m_waiting.end(); ++it) {
        const auto& [path, id] = it->first;
        if (!path.starts_with(from))
            break;
        // A folder that was removed and made again leaves a path and several inodes behind.
        const bool isOther = path == from && id != fileID;
        if (isAtOrBelow(path, from) && !isOther && (it->second.flags & carried) != 0)
            moved.push_back({{to + path.substr(from.size()), id}, it->second.flags & carried});
    }
    for (const auto& [key, flags] : moved)
        add(key.first, key.second, flags);
}

std::optional<EventCoalescer::Clock::time_point> EventCoalescer::due() const {
    if (m_waiting.empty())
        return std::nullopt;
    const auto soon = m_firstWaiting + std::min<std::chrono::milliseconds>(promptness, m_latency);
    return m_lastTaken ? std::max(soon, *m_lastTaken + m_latency) : soon;
}

QList<FileEvent> EventCoalescer::take() {
    QList<FileEvent> batch;
    batch.reserve(static_cast<qsizetype>(m_waiting.size()));
    for (const auto& [key, waiting] : m_waiting)
        batch.append({QFile::decodeName(key.first.c_str()), key.second, 0, waiting.flags, waiting.eventID});
    std::sort(batch.begin(), batch.end(), [](const FileEvent& a, const FileEvent& b) {
        return a.eventID < b.eventID;
    });
    m_waiting.clear();
    m_lastTaken = Clock::now();
    return batch;
}

} // namespace Stemhaven
