#pragma once

#include "monitor/ChecksInProgress.h"
#include "project/ProjectDetails.h"

#include <QList>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
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
    /// The outcome of a check. At most one of the first four is called, on the GUI thread; none where the
    /// bundle is left to another check, at the place to which it has moved.
    struct Callbacks {
        std::function<void(const ProjectDetails&)> written;
        std::function<void(const ProjectDetails&)> unreadable;
        std::function<void(const ProjectDetails&)> vanished;
        std::function<void(const ProjectDetails&)> databaseFailed;
        /// The check is over, and the database has not failed. On any thread.
        std::function<void()> ended;
        /// Asked on the GUI thread: whether the path lies in a folder that is searched.
        std::function<bool(const QString& path)> isSearched;
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
    using TakeResult = std::function<void(const TaskPointer& done, QSqlQuery& query)>;

    struct Record {
        QString path() const { return filepath + filename; }

        long long id = 0;
        QString filepath;
        QString filename;
    };

    BundleCheck(
        TaskManager& tasks, std::shared_ptr<ChecksInProgress> checks, ProjectDetails details,
        Callbacks callbacks);

    /// Runs statement after the task, or at once where that is null. A failure of the database ends the
    /// check. take may use this: the check lives until it has been called.
    void
    select(const TaskPointer& after, const QString& statement, const char* failure, const TakeResult& take);
    /// From the first three columns of the query's current row; logs an id that is no number.
    static std::optional<Record> recordIn(const QSqlQuery& query);

    void sufidKnown(const TaskPointer& task, const QList<Record>& records);
    bool isAlsoAt(const QString& path) const;
    void logDuplicates(const TaskPointer& task, const Record& chosen, const QList<Record>& records);
    void sufidInDoubt(const TaskPointer& task, const QList<Record>& records);
    void takeIdentityFrom(const TaskPointer& task, const QList<Record>& records);
    void sufidUnknown(const TaskPointer& task);
    void lookUpNote(const TaskPointer& task, const Note& note);
    void noteMatched(const TaskPointer& task, const Record& record, const Note& note);
    void lookUpPath(const TaskPointer& task);
    void insert(const TaskPointer& task);
    /// details say where the record is to have the bundle.
    void update(const TaskPointer& task, long long projectId, const ProjectDetails& details);
    /// Runs body unless the bundle is gone. What it throws is logged after what, and the bundle is
    /// unreadable.
    void skippingUnreadable(const char* what, const std::function<void()>& body) const;
    void databaseFailed(const DbException& error, const QString& what);

    TaskManager& m_tasks;
    std::shared_ptr<ChecksInProgress> m_checks;
    ProjectDetails m_details;
    Callbacks m_callbacks;
    std::atomic<bool> m_hasDatabaseFailed = false;
};

} // namespace Stemhaven
