#include "database/AwaitedTask.h"

#include "app/errors/DbException.h"
#include "database/Outage.h"
#include "database/TaskManager.h"

#include <QDebug>

#include <chrono>
#include <utility>

namespace Stemhaven {

AwaitedTask::AwaitedTask(Work work, QSqlDatabase& database) : Task(&database), m_work(std::move(work)) {}

bool AwaitedTask::run(TaskManager& tasks, Work work, const std::function<bool()>& giveUp) {
    constexpr std::chrono::milliseconds betweenLooks(50);
    std::future<std::exception_ptr> outcome;
    {
        auto task = std::make_shared<AwaitedTask>(std::move(work), tasks.mainDatabase());
        outcome = task->m_outcome.get_future();
        tasks.addTask(std::move(task));
    }
    while (outcome.wait_for(betweenLooks) != std::future_status::ready) {
        if (giveUp())
            return false;
    }
    try {
        if (const auto failure = outcome.get())
            std::rethrow_exception(failure);
    } catch (const std::future_error&) {
        // The task went without having run.
        return false;
    }
    return true;
}

unsigned short AwaitedTask::exec() {
    std::exception_ptr failure;
    try {
        m_work(database());
        outage().succeeded();
    } catch (const DbException& error) {
        failure = std::make_exception_ptr(outage().logged("Exception caught in AwaitedTask::exec()!", error));
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in AwaitedTask::exec()!" << error.what();
        failure = std::current_exception();
    } catch (...) {
        qCritical() << "Unknown exception caught in AwaitedTask::exec()!";
        failure = std::current_exception();
    }
    // Before the waiting thread goes on, which may end what the work refers to.
    m_work = {};
    m_outcome.set_value(failure);
    return 0;
}

} // namespace Stemhaven
