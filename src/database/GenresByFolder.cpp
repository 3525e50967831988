#include "database/GenresByFolder.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/GenreStatements.h"
#include "database/GenreTask.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QDir>
#include <QMap>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

using TaskPointer = std::shared_ptr<Task>;

/// Where Logic Pro and GarageBand keep projects by default: a name that says nothing of the music.
bool isDefaultFolder(const QString& name) {
    return name == QLatin1String("Logic") || name == QLatin1String("GarageBand");
}

GenreTask::Assignment assignmentToProject(const QString& name, long long projectId) {
    const QString id = QString::number(projectId);
    return {
        .select = GenreStatements::selectByName(name),
        .selectFailure = QStringLiteral("Could not select genres for auto assignment! Genre name:'") + name,
        .duplicate =
            QStringLiteral("Possible duplicate genre named '") + name + QStringLiteral(" found. genre_id:"),
        .invalidId =
            QStringLiteral("Could not convert genre_id to long long... Skipping auto genre assignment."),
        .insert = GenreStatements::insertForNewProject(name),
        .insertFailure = QStringLiteral("Could not create new genre named:") + name,
        .update = [=](qint64 genreId) { return GenreStatements::assignToProject(genreId, projectId); },
        .updateFailure =
            [=](qint64) {
                return QStringLiteral("Could not auto assign genre for new project_id:") + id +
                    QStringLiteral(" to genre named '") + name;
            },
        .success =
            [=](qint64 genreId) {
                return QStringLiteral("New project_id:") + id +
                    QStringLiteral(" genre was auto assigned to '") + name + QStringLiteral("' genre_id:") +
                    QString::number(genreId);
            }};
}

GenreTask::Assignment assignmentToFolder(const QString& name, const QList<qint64>& projectIds) {
    return {
        .select = GenreStatements::selectIdAndNameByName(name),
        .selectFailure = QStringLiteral("Could not retrieve genre by name: ") + name,
        .duplicate = QStringLiteral("Possible duplicate genre name detected! Genre name:") + name +
            QStringLiteral(" genre_id:"),
        .invalidId = QStringLiteral("Could not convert genre_id to long long! Potentially invalid genre_id. "
                                    "Skipping auto genre assignment"),
        .insert = GenreStatements::insertForAllProjects(name),
        .insertFailure = QStringLiteral("Could not create new genre! Name:") + name,
        .update = [=](qint64 genreId) { return GenreStatements::assignToFolder(genreId, name, projectIds); },
        .updateFailure =
            [](qint64 genreId) {
                return QStringLiteral("Could not assign genre_id:") + QString::number(genreId) +
                    QStringLiteral(" to projects!");
            },
        .success =
            [=](qint64 genreId) {
                return QStringLiteral("Genre '") + name + QStringLiteral("' with genre_id:") +
                    QString::number(genreId) +
                    QStringLiteral(
                           " assigned to all projects in matching folders with no genre assigned yet.");
            }};
}

/// One assignment to all projects. Reads their folders in pages, then goes through the names. Its tasks keep
/// it alive; all but start() is run by them, on the worker.
class FolderGenres : public std::enable_shared_from_this<FolderGenres> {
public:
    explicit FolderGenres(TaskManager& tasks) : m_tasks(tasks) {}

    void start() {
        queue([this] {
            loggingFailures(
                QStringLiteral("Could not get filepaths for automatic genre assignment!"),
                [this] { readPage() ? start() : assignNext(); });
        });
    }

private:
    // What one task reads or writes, some milliseconds' worth.
    static constexpr int pageSize = 2000;
    static constexpr qsizetype assignmentSize = 500;

    void queue(std::function<void()> step) {
        m_tasks.addTask(
            std::make_shared<SimpleTask>([self = shared_from_this(), step = std::move(step)] { step(); }));
    }

    /// Returns whether there are more.
    bool readPage() {
        QSqlQuery query(m_tasks.mainDatabase());
        query.setForwardOnly(true);
        if (!query.exec(GenreStatements::selectFolders(m_lastProjectId, pageSize)))
            throw DbException(&query, QStringLiteral("Query had an error"));
        int rows = 0;
        for (; query.next(); ++rows) {
            m_lastProjectId = query.value(0).toLongLong();
            if (!query.value(2).toBool())
                continue;
            const auto name = QDir(query.value(1).toString()).dirName();
            if (!name.isEmpty() && !isDefaultFolder(name))
                m_projects[name].append(m_lastProjectId);
        }
        return rows == pageSize;
    }

    void assignNext() {
        if (m_projects.isEmpty())
            return;
        const auto first = m_projects.begin();
        const QString name = first.key();
        QList<qint64>& remaining = first.value();
        const QList<qint64> projectIds = remaining.last(std::min(remaining.size(), assignmentSize));
        remaining.resize(remaining.size() - projectIds.size());
        if (remaining.isEmpty())
            m_projects.erase(first);

        auto task = std::make_shared<GenreTask>(assignmentToFolder(name, projectIds), m_tasks.mainDatabase());
        task->addNextTask(std::make_shared<SimpleTask>([self = shared_from_this()] { self->assignNext(); }));
        m_tasks.addTask(task);
    }

    TaskManager& m_tasks;
    qint64 m_lastProjectId = 0;
    QMap<QString, QList<qint64>> m_projects; // those without a genre, by the name of their folder
};

} // namespace

void assignGenreToNewProject(
    TaskManager& tasks, const TaskPointer& parent, long long projectId, const QString& folderPath) {
    const auto name = QDir(folderPath).dirName();
    if (name.isEmpty())
        return;
    if (isDefaultFolder(name)) {
        qDebug() << "Skipping auto genre assignment. Default directory detected";
        return;
    }
    qInfo().noquote().nospace() << "Auto-assigning genre for new project_id:" << projectId
                                << " based on its directory.";
    tasks.addTask(
        std::make_shared<GenreTask>(assignmentToProject(name, projectId), tasks.mainDatabase()), parent);
}

void assignGenresToAllProjects(TaskManager& tasks) {
    std::make_shared<FolderGenres>(tasks)->start();
}

} // namespace Stemhaven
