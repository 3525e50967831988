#include "database/GenresByFolder.h"

#include "app/errors/DbException.h"
#include "database/GenreStatements.h"
#include "database/QueryTask.h"
#include "database/SqlText.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QDir>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

namespace {

using TaskPointer = std::shared_ptr<Task>;

/// Where Logic Pro and GarageBand keep projects by default: a name that says nothing of the music.
bool isDefaultFolder(const QString& name) {
    return name == QLatin1String("Logic") || name == QLatin1String("GarageBand");
}

void assignToProject(
    TaskManager& tasks, const TaskPointer& parent, long long projectId, const QString& name,
    long long genreId) {
    auto task = std::make_shared<QueryTask>(
        GenreStatements::assignToProject(genreId, projectId), tasks.mainDatabase());
    task->setSuccessCallback([=](const TaskPointer&) {
        qInfo().noquote().nospace() << "New project_id:" << projectId << " genre was auto assigned to '"
                                    << name << "' genre_id:" << genreId;
    });
    task->setSqlErrorCallback([=](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace()
            << "Could not auto assign genre for new project_id:" << projectId << " to genre named '" << name;
    });
    tasks.addTask(task, parent);
}

void createForProject(
    TaskManager& tasks, const TaskPointer& parent, long long projectId, const QString& name) {
    auto task = std::make_shared<QueryTask>(GenreStatements::insertForNewProject(name), tasks.mainDatabase());
    task->setOnInsertCallback([&tasks, projectId, name](const TaskPointer& done, long long genreId) {
        assignToProject(tasks, done, projectId, name, genreId);
    });
    task->setSqlErrorCallback([name](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace() << "Could not create new genre named:" << name;
    });
    tasks.addTask(task, parent);
}

void assignToFolders(TaskManager& tasks, const TaskPointer& parent, const QString& name, long long genreId) {
    auto task =
        std::make_shared<QueryTask>(GenreStatements::assignToFolders(genreId, name), tasks.mainDatabase());
    task->setSuccessCallback(
        [=](const TaskPointer&) {
            qInfo().noquote().nospace()
                << "Genre '" << name << "' with genre_id:" << genreId
                << " assigned to all projects in matching folders with no genre assigned yet.";
        });
    task->setSqlErrorCallback([=](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace() << "Could not assign genre_id:" << genreId << " to projects!";
    });
    tasks.addTask(task, parent);
}

void createForFolders(TaskManager& tasks, const TaskPointer& parent, const QString& name) {
    auto task =
        std::make_shared<QueryTask>(GenreStatements::insertForAllProjects(name), tasks.mainDatabase());
    task->setOnInsertCallback([&tasks, name](const TaskPointer& done, long long genreId) {
        assignToFolders(tasks, done, name, genreId);
    });
    task->setSqlErrorCallback([name](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace() << "Could not create new genre! Name:" << name;
    });
    tasks.addTask(task, parent);
}

void assignGenreOfFolder(TaskManager& tasks, const TaskPointer& parent, const QString& name) {
    auto task =
        std::make_shared<QueryTask>(GenreStatements::selectIdAndNameByName(name), tasks.mainDatabase());
    task->setQueryCallback([&tasks, name](const TaskPointer& done, int rows, QSqlQuery* query) {
        if (!query->next()) {
            createForFolders(tasks, done, name);
            return;
        }
        const auto stored = query->value(0);
        if (rows >= 2) {
            qWarning().noquote().nospace() << "Possible duplicate genre name detected! Genre name:" << name
                                           << " genre_id:" << stored.toString();
        }
        bool converted = false;
        const auto genreId = stored.toLongLong(&converted);
        if (!converted) {
            qCritical()
                << "Could not convert genre_id to long long! Potentially invalid genre_id. Skipping auto "
                   "genre assignment";
            return;
        }
        assignToFolders(tasks, done, name, genreId);
    });
    task->setSqlErrorCallback([name](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace() << "Could not retrieve genre by name: " << name;
    });
    tasks.addTask(task, parent);
}

} // namespace

void assignGenreToNewProject(
    TaskManager& tasks, const TaskPointer& parent, long long projectId, const QString& folderPath) {
    const auto name = QDir(folderPath).dirName();
    if (isDefaultFolder(name)) {
        qDebug() << "Skipping auto genre assignment. Default directory detected";
        return;
    }
    qInfo().noquote().nospace() << "Auto-assigning genre for new project_id:" << projectId
                                << " based on its directory.";
    auto task = std::make_shared<QueryTask>(GenreStatements::selectByName(name), tasks.mainDatabase());
    task->setQueryCallback([&tasks, projectId, name](const TaskPointer& done, int rows, QSqlQuery* query) {
        if (!query->next()) {
            createForProject(tasks, done, projectId, name);
            return;
        }
        const auto stored = query->value(0);
        if (rows >= 2) {
            qWarning().noquote().nospace()
                << "Possible duplicate genre named '" << name << " found. genre_id:" << stored.toString();
        }
        bool converted = false;
        const auto genreId = stored.toLongLong(&converted);
        if (!converted) {
            qCritical() << "Could not convert genre_id to long long... Skipping auto genre assignment.";
            return;
        }
        assignToProject(tasks, done, projectId, name, genreId);
    });
    task->setSqlErrorCallback([name](const TaskPointer&, const DbException&) {
        qCritical().noquote().nospace()
            << "Could not select genres for auto assignment! Genre name:'" << name;
    });
    tasks.addTask(task, parent);
}

void assignGenresToAllProjects(TaskManager& tasks) {
    auto task = std::make_shared<QueryTask>(GenreStatements::selectFolders(), tasks.mainDatabase());
    task->setQueryCallback([&tasks](const TaskPointer& done, int, QSqlQuery* query) {
        while (query->next()) {
            const auto name = QDir(query->value(0).toString()).dirName();
            if (!isDefaultFolder(name))
                assignGenreOfFolder(tasks, done, name);
        }
    });
    task->setSqlErrorCallback([](const TaskPointer&, const DbException&) {
        qCritical() << "Could not get filepaths for automatic genre assignment!";
    });
    tasks.addTask(task);
}

} // namespace Stemhaven
