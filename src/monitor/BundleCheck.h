#pragma once

#include "monitor/ChecksInProgress.h"
#include "project/ProjectDetails.h"

#include <QList>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

class QSqlQuery;

namespace Stemhaven {

class DbException;
class Task;
class TaskManager;

/// Decides for one bundle whether it is an existing record that changed or moved, a copy, or a new project,
/// and has the record written.
///
/// Each step is a follow-up of the task whose result it depends on, so the check is over when its first task
/// is. The tasks' callbacks keep the check alive; its end takes the bundle off the list of those being
/// checked.
class BundleCheck : public std::enable_shared_from_this<BundleCheck> {
public:
    /// What a check comes to, told on the GUI thread. A bundle whose move is told by other events is none of
    /// the first four.
    struct Callbacks {
        std::function<void(const ProjectDetails&)> written;
        std::function<void(const ProjectDetails&)> unreadable;
        std::function<void(const ProjectDetails&)> vanished;
        std::function<void(const ProjectDetails&)> databaseFailed;
        /// Whatever it came to, but for a failed database. From any thread.
        std::function<void()> ended;
    };

    /// Null when the bundle is being checked already.
    static std::shared_ptr<BundleCheck> begin(
        TaskManager& tasks, std::shared_ptr<ChecksInProgress> checks, const ProjectDetails& details,
        Callbacks callbacks);

    ~BundleCheck();
    BundleCheck(const BundleCheck&) = delete;
    BundleCheck& operator=(const BundleCheck&) = delete;

    void start();

private:
    using TaskPointer = std::shared_ptr<Task>;
    using Note = std::pair<std::int64_t, std::string>;

    struct Record {
        QString path() const { return filepath + filename; }

        long long id = 0;
        QString filepath;
        QString filename;
    };

    BundleCheck(
        TaskManager& tasks, std::shared_ptr<ChecksInProgress> checks, ProjectDetails details,
        Callbacks callbacks);

    void sufidKnown(const TaskPointer& task, const QList<Record>& records);
    void logDuplicates(const TaskPointer& task, const Record& chosen, const QList<Record>& records);
    void sufidInDoubt(const TaskPointer& task, const QList<Record>& records);
    void takeIdentityFrom(const TaskPointer& task, const QList<Record>& records);
    void sufidUnknown(const TaskPointer& task);
    void lookUpNote(const TaskPointer& task, const Note& note);
    void noteMatched(const TaskPointer& task, const Record& record, const Note& note);
    void lookUpPath(const TaskPointer& task);
    void insert(const TaskPointer& task);
    void update(const TaskPointer& task, long long projectId);
    void skippingUnreadable(const char* what, const std::function<void()>& body) const;
    void databaseFailed(const DbException& error, const QString& what);

    TaskManager& m_tasks;
    std::shared_ptr<ChecksInProgress> m_checks;
    ProjectDetails m_details;
    Callbacks m_callbacks;
    std::atomic<bool> m_hasDatabaseFailed = false;
};

} // namespace Stemhaven
