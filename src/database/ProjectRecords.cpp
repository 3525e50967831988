// The operations of the task manager that write the records of projects.

#include "app/SettingsKeys.h"
#include "app/errors/DbException.h"
#include "database/GenresByFolder.h"
#include "database/ProjectStatements.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "project/NoteFile.h"
#include "project/ProjectData.h"
#include "project/ProjectDetails.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace Stemhaven {

namespace {

QString bundlePath(const ProjectDetails& details) {
    return QStringLiteral("%1/%2").arg(details.filepath, details.filename);
}

QueryTask::SqlErrorCallback forwardedTo(TaskManager::RecordErrorCallback onError) {
    return [onError = std::move(onError)](const std::shared_ptr<Task>&, const DbException& error) {
        if (onError)
            onError(error);
    };
}

} // namespace

void TaskManager::addProject(
    const ProjectDetails& details, const std::shared_ptr<Task>& parent, RecordCallback onSuccess,
    RecordErrorCallback onError) {
    if (!QFileInfo::exists(bundlePath(details)))
        throw Exception(QStringLiteral("Will not add project. Project file not found!"));
    if (!details.isValid)
        throw Exception(QStringLiteral("Will not add project. Project details are invalid"));

    const ProjectData data(details.bundlePath());
    const auto statement = ProjectStatements::insert(details, data, QDateTime::currentSecsSinceEpoch());
    qDebug() << "Created task for new project INSERT: " << statement;

    auto task = std::make_shared<QueryTask>(statement, m_mainDatabase);
    task->setOnInsertCallback([this, details, onSuccess = std::move(onSuccess)](
                                  const std::shared_ptr<Task>& done, long long projectId) {
        qInfo() << "New project successfully added! project_id:" << projectId;
        updateStemhavenPlist(details, projectId);
        if (QSettings().value(SettingsKeys::genreFromDir, false).toBool())
            assignGenreToNewProject(*this, done, projectId, details.filepath);
        if (onSuccess)
            onSuccess(done, projectId);
    });
    task->setSqlErrorCallback(forwardedTo(std::move(onError)));
    addTask(task, parent);
}

void TaskManager::updateProject(
    const ProjectDetails& details, long long projectId, const std::shared_ptr<Task>& parent,
    RecordCallback onSuccess, RecordErrorCallback onError) {
    if (const auto path = bundlePath(details); !QFileInfo::exists(path))
        throw Exception(QStringLiteral("Will not update project. Could not find project file:") + path);
    if (!details.isValid)
        throw Exception(QStringLiteral("Will not update project. Project details are invalid!"));

    const ProjectData data(details.bundlePath());
    auto task = std::make_shared<QueryTask>(
        ProjectStatements::update(details, data, QDateTime::currentSecsSinceEpoch(), projectId),
        m_mainDatabase);
    task->setSuccessCallback(
        [details, projectId, onSuccess = std::move(onSuccess)](const std::shared_ptr<Task>& done) {
            updateStemhavenPlist(details, projectId);
            if (onSuccess)
                onSuccess(done, projectId);
        });
    task->setSqlErrorCallback(forwardedTo(std::move(onError)));
    addTask(task, parent);
}

void TaskManager::retroactivelyAssignGenreByDir() {
    assignGenresToAllProjects(*this);
}

} // namespace Stemhaven
