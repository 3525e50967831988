#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace Stemhaven {

/// How far batches of events have been dealt with, whose bundles are checked in any order: the position moves
/// to the end of a batch only when all batches up to it have been written. Safe from any thread.
class ReplayProgress {
public:
    /// Held by all that a batch caused. The batch is over when the last holder lets go of it.
    class Ticket {
    public:
        Ticket(ReplayProgress& progress, unsigned long long id) : m_progress(progress), m_id(id) {}

        ~Ticket();
        Ticket(const Ticket&) = delete;
        Ticket& operator=(const Ticket&) = delete;

        /// Something of the batch is left undone: the next start is to replay it.
        void abandon() { m_isAbandoned = true; }

    private:
        ReplayProgress& m_progress;
        unsigned long long m_id;
        bool m_isAbandoned = false;
    };

    /// advanceTo gets ids in ascending order, on the thread that ends a batch. Outlives all tickets.
    explicit ReplayProgress(std::function<void(unsigned long long id)> advanceTo);

    /// Batches are begun in the order of their ids.
    std::shared_ptr<Ticket> begin(unsigned long long lastEventID);

    /// Once no ticket is left: what was abandoned does not hold up later batches, as it is being replayed.
    void startAnew();

    /// Whether all batches that were begun are over.
    bool isComplete() const;

private:
    void finish(unsigned long long id);

    const std::function<void(unsigned long long id)> m_advanceTo;
    mutable std::mutex m_mutex;
    std::map<unsigned long long, int> m_open; // how many batches of that id are not over
};

} // namespace Stemhaven
