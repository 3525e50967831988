#pragma once

#include <QString>

#include <memory>

namespace Stemhaven {

class Task;
class TaskManager;

/// Genres named after the folders that hold the bundles. Each works as follow-ups of parent, so that two
/// projects of one folder do not both make its genre. Failures are logged and end their own branch.
void assignGenreToNewProject(
    TaskManager& tasks, const std::shared_ptr<Task>& parent, long long projectId, const QString& folderPath);

void assignGenresToAllProjects(TaskManager& tasks);

} // namespace Stemhaven
