#pragma once

#include "database/Task.h"

#include <exception>
#include <functional>
#include <future>

class QSqlDatabase;

namespace Stemhaven {

/// Runs a function on the worker for another thread that waits for it. Has no callbacks, so it never waits
/// for the GUI thread.
class AwaitedTask : public Task {
public:
    using Work = std::function<void(QSqlDatabase& database)>;

    /// Queues work on the main connection and waits for its end. False when the manager dropped it or giveUp
    /// said so meanwhile; work may run later then, so it must own what it uses. What work throws is logged
    /// and thrown here. Never on the GUI thread.
    static bool run(TaskManager& tasks, Work work, const std::function<bool()>& giveUp);

    AwaitedTask(Work work, QSqlDatabase& database);
    unsigned short exec() override;

private:
    Work m_work;
    std::promise<std::exception_ptr> m_outcome;
};

} // namespace Stemhaven
