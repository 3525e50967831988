#include "monitor/MoveResolution.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"
#include "database/QueryTask.h"
#include "database/SqlText.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace Stemhaven {

MoveResolution::MoveResolution(TaskManager& tasks, Callbacks callbacks)
    : m_tasks(tasks),
      m_callbacks(std::move(callbacks)) {}

void MoveResolution::resolve(const ChangedPath& changed) {
    if (changed.isProject())
        resolveProject(changed);
    else
        resolveFolder(changed);
}

void MoveResolution::resolveFolder(const ChangedPath& changed) {
    const auto latest = changed.getLatestPathFound();
    if (!latest) {
        qDebug()
            << "ProjectMonitor: Could not find the latest path for changed directory! Checking next paths";
        qDebug() << "\tPossible locations: " << changed;
        return;
    }
    const auto priors = changed.getPriorPaths();
    for (const auto& prior : priors) {
        auto select = std::make_shared<QueryTask>(
            ProjectStatements::selectByFolder(prior.path), m_tasks.mainDatabase());
        select->setQueryCallback([this, self = shared_from_this(), from = prior.path, to = *latest,
                                  fileID = changed.fileID()](const TaskPointer& task, int, QSqlQuery* query) {
            while (query->next()) {
                bool converted = false;
                const auto id = query->value(0).toULongLong(&converted);
                if (!converted) {
                    qWarning() << "ProjectMonitor: Project filepath changed but could not convert projectID "
                                  "to Uint! "
                                  "Skipping...";
                    continue;
                }
                const QString path =
                    unescape(query->value(2).toString()) + unescape(query->value(1).toString());
                // The pattern finds /a/Music2 for /a/Music too, and takes "_" for any letter.
                if (!path.startsWith(from + QLatin1Char('/')))
                    continue;
                QString newPath = path;
                newPath.replace(from, to);
                resolveOne(
                    task, fileID, ProjectDetails(path), ProjectDetails(newPath), static_cast<long long>(id));
            }
        });
        select->setSqlErrorCallback([](const TaskPointer&, const DbException& error) {
            logFailure(error) << "Could not select projects matching prior paths for filepath resolution!";
        });
        m_tasks.addTask(select);
    }
}

void MoveResolution::resolveProject(const ChangedPath& changed) {
    const auto latest = changed.getLatestPath();
    if (!latest) {
        qWarning() << "ProjectMonitor: No latest path found for moved/renamed project! Skipping...";
        return;
    }
    const ProjectDetails newDetails(*latest);
    const auto priors = changed.getPriorPaths();
    for (const auto& prior : priors) {
        const auto oldDetails = prior.getProjectDetails();
        auto select =
            std::make_shared<QueryTask>(ProjectStatements::selectByPlace(oldDetails), m_tasks.mainDatabase());
        select->setQueryCallback(
            [this, self = shared_from_this(), oldDetails, newDetails,
             fileID = changed.fileID()](const TaskPointer& task, int rows, QSqlQuery* query) {
                if (rows > 1)
                    qWarning() << "ProjectMonitor: Detected duplicate project during move/rename update!";
                // Such as one that was called Untitled until now.
                if (rows == 0 && QFileInfo::exists(newDetails.bundlePath()))
                    m_callbacks.unknownBundle(newDetails.bundlePath());
                while (query->next()) {
                    bool converted = false;
                    const auto id = query->value(0).toULongLong(&converted);
                    if (converted) {
                        resolveOne(task, fileID, oldDetails, newDetails, static_cast<long long>(id));
                    } else {
                        qWarning() << "ProjectMonitor: Could not convert projectID to UInt while resolving "
                                      "moved/renamed project!";
                    }
                }
            });
        select->setSqlErrorCallback(
            [this, self = shared_from_this(), newDetails](const TaskPointer&, const DbException& error) {
                logFailure(error)
                    << "ProjectMonitor: Could not select projects to check for moved/renamed paths!";
                m_callbacks.unknownBundle(newDetails.bundlePath());
            });
        m_tasks.addTask(select);
    }
}

void MoveResolution::resolveOne(
    const TaskPointer& task, unsigned long long fileID, const ProjectDetails& oldDetails,
    const ProjectDetails& newDetails, long long projectId) {
    if (!oldDetails.isValid) {
        qWarning() << "ProjectMonitor: Old project details path is invalid!";
        return;
    }
    if (!newDetails.isValid) {
        qWarning() << "ProjectMonitor: New project details are invalid!";
        return;
    }
    const ProjectDetails nowAtOldPlace(oldDetails.bundlePath());
    if (nowAtOldPlace.sufid.valid) {
        qDebug() << "Project was found at prior location: " << oldDetails << " Moving on...";
        // Another bundle may have taken the place meanwhile; then this one is to be found by its identity.
        if (newDetails.sufid.valid && newDetails.sufid != nowAtOldPlace.sufid)
            m_callbacks.unknownBundle(newDetails.bundlePath());
        m_callbacks.settled(fileID);
        return;
    }
    if (!newDetails.sufid.valid) {
        qDebug() << "Searching for moved/renamed project. Not found at:";
        qDebug() << "\tPrevious: " << oldDetails.bundlePath() << " at " << oldDetails.filepath;
        qDebug() << "\tPotential:" << newDetails.bundlePath() << " at " << newDetails.filepath;
        return;
    }
    // After an exchange of names the record at the old place is another bundle's.
    auto select =
        std::make_shared<QueryTask>(ProjectStatements::selectSufid(projectId), m_tasks.mainDatabase());
    select->setQueryCallback([this, self = shared_from_this(), oldDetails, newDetails,
                              projectId](const TaskPointer& done, int, QSqlQuery* query) {
        const auto recorded = query->next() ? query->value(0).toString() : QString();
        if (recorded.isEmpty())
            moveUnlessAnotherIs(done, oldDetails, newDetails, projectId);
        else if (recorded == newDetails.sufid.toString())
            move(done, oldDetails, newDetails, projectId);
        else
            m_callbacks.unknownBundle(newDetails.bundlePath());
    });
    select->setSqlErrorCallback(whenRefused(newDetails));
    m_tasks.addTask(select, task);
    m_callbacks.settled(fileID);
}

void MoveResolution::moveUnlessAnotherIs(
    const TaskPointer& task, const ProjectDetails& oldDetails, const ProjectDetails& newDetails,
    long long projectId) {
    auto select = std::make_shared<QueryTask>(
        ProjectStatements::selectBySufid(newDetails.sufid.toString()), m_tasks.mainDatabase());
    select->setQueryCallback([this, self = shared_from_this(), oldDetails, newDetails,
                              projectId](const TaskPointer& done, int rows, QSqlQuery*) {
        if (rows == 0)
            move(done, oldDetails, newDetails, projectId);
        else
            m_callbacks.unknownBundle(newDetails.bundlePath());
    });
    select->setSqlErrorCallback(whenRefused(newDetails));
    m_tasks.addTask(select, task);
}

std::function<void(const MoveResolution::TaskPointer&, const DbException&)>
MoveResolution::whenRefused(const ProjectDetails& newDetails) {
    return [this, self = shared_from_this(), newDetails](const TaskPointer&, const DbException& error) {
        logFailure(error) << "ProjectMonitor: Could not move/rename project!";
        m_callbacks.unknownBundle(newDetails.bundlePath());
    };
}

void MoveResolution::move(
    const TaskPointer& task, const ProjectDetails& oldDetails, const ProjectDetails& newDetails,
    long long projectId) {
    qDebug() << "ProjectMonitor: Found moved/renamed project at: " << newDetails;
    auto update =
        std::make_shared<QueryTask>(ProjectStatements::move(newDetails, projectId), m_tasks.mainDatabase());
    update->setSuccessCallback([this, self = shared_from_this(), oldDetails, newDetails](const TaskPointer&) {
        qInfo() << "Project was moved/renamed!"
                << "\t From:" << oldDetails << "\t To:  " << newDetails;
        m_callbacks.written();
    });
    update->setSqlErrorCallback(whenRefused(newDetails));
    m_tasks.addTask(update, task);
}

} // namespace Stemhaven
