#pragma once

#include "monitor/ChangedPath.h"
#include "project/ProjectDetails.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace Stemhaven {

class DbException;
class Task;
class TaskManager;

/// Finds the records of what was moved or renamed, and moves them along.
///
/// Its tasks' callbacks keep it alive.
class MoveResolution : public std::enable_shared_from_this<MoveResolution> {
public:
    /// On the GUI thread.
    struct Callbacks {
        /// The move needs no more looking at.
        std::function<void(unsigned long long fileID)> settled;
        /// A record has been moved.
        std::function<void()> written;
        /// A bundle was moved that has no record, or whose record could not be moved along.
        std::function<void(const QString& bundlePath)> unknownBundle;
    };

    /// tasks outlives the resolution.
    MoveResolution(TaskManager& tasks, Callbacks callbacks);

    /// Queues what is needed for one move. Looks at the disk; from any thread.
    void resolve(const ChangedPath& changed);

private:
    using TaskPointer = std::shared_ptr<Task>;

    void resolveFolder(const ChangedPath& changed);
    void resolveProject(const ChangedPath& changed);
    void resolveOne(
        const TaskPointer& task, unsigned long long fileID, const ProjectDetails& oldDetails,
        const ProjectDetails& newDetails, long long projectId);

    /// For a record without an identity: it is moved only if no other record has the bundle's identity, as
    /// then the bundle is that one's.
    void moveUnlessAnotherIs(
        const TaskPointer& task, const ProjectDetails& oldDetails, const ProjectDetails& newDetails,
        long long projectId);

    /// What to do when the database refuses: have the bundle checked by itself.
    std::function<void(const TaskPointer&, const DbException&)> whenRefused(const ProjectDetails& newDetails);

    void move(
        const TaskPointer& task, const ProjectDetails& oldDetails, const ProjectDetails& newDetails,
        long long projectId);

    TaskManager& m_tasks;
    Callbacks m_callbacks;
};

} // namespace Stemhaven
