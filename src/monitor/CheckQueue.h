#pragma once

#include "monitor/ReplayProgress.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace Stemhaven {

/// A bundle that is to be checked, and what is known of it already.
struct CheckRequest {
    QString path;
    /// Where the bundle was seen before it moved to path.
    QStringList priorPaths;
    /// A change of the record is to be told at once. A search tells of its changes at its end.
    bool isFromEvent = false;
    /// Of the batches of events that asked for it.
    std::vector<std::shared_ptr<ReplayProgress::Ticket>> tickets;
    /// When it was undecided, only its path spoke for a record: those with notes are decided before.
    bool isDecidedByPath = false;
    std::optional<std::chrono::steady_clock::time_point> undecidedSince = {};
    /// There was no bundle at path when it was looked at before.
    bool isVanished = false;
};

/// The bundles that wait for their check, each path once. What is on record already goes before what is new,
/// so that a save does not wait for a folder of thousands that was dropped in. Not safe by itself.
class CheckQueue {
public:
    using Clock = std::chrono::steady_clock;

    struct Group {
        QList<CheckRequest> requests;
        bool areUndecided = false;
    };

    /// False where the path waited already; the two requests are one then.
    bool add(CheckRequest request, bool isRecorded);
    /// Ahead of all others.
    void putBack(const Group& group);
    /// To be checked again when nothing else is left, and not before that time.
    void addUndecided(CheckRequest request, Clock::time_point notBefore);
    /// To be added when its time has come, unless the same path is asked for before.
    void addDelayed(CheckRequest request, Clock::time_point due);

    /// Moves what is due by now to the others.
    void takeUpDelayed();
    std::optional<Clock::time_point> nextDelayed() const;

    /// The next ones to be checked together; none where nothing waits that may be checked now.
    Group take(bool mayDecideAll);

    /// Without the delayed ones.
    qsizetype size() const { return m_waiting.size() + m_undecided.size(); }

    /// Of those that wait for nothing else.
    qsizetype readySize() const { return m_waiting.size(); }

    /// Empties the queue; the batches are to be replayed by the next start.
    void abandonAll();

private:
    static void merge(CheckRequest& into, CheckRequest&& request);

    QHash<QString, CheckRequest> m_waiting;
    std::deque<QString> m_recorded;
    std::deque<QString> m_new;
    QHash<QString, std::pair<Clock::time_point, CheckRequest>> m_undecided;
    std::map<QString, std::pair<Clock::time_point, CheckRequest>> m_delayed;
};

} // namespace Stemhaven
