#pragma once

#include <QString>

#include <memory>

namespace Stemhaven {

class Task;
class TaskManager;

/// Genres named after the folders that hold the bundles. A name counts letter by letter. Failures are logged.
///
/// Works as follow-up of parent, so that nothing else is written to the project in between.
void assignGenreToNewProject(
    TaskManager& tasks, const std::shared_ptr<Task>& parent, long long projectId, const QString& folderPath);

/// To all projects without a genre. Each piece of the work is a task that queues the next one behind whatever
/// has been queued meanwhile, so an edit of the user never waits for more than one of them.
void assignGenresToAllProjects(TaskManager& tasks);

} // namespace Stemhaven
