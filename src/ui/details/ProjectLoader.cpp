#include "ui/details/ProjectLoader.h"

#include "app/errors/DbException.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"
#include "database/UserDataStatements.h"

#include <QDebug>
#include <QPointer>
#include <QSqlQuery>
#include <QVariant>

#include <functional>
#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;
using Stemhaven::DbException;
using Stemhaven::QueryTask;
using Stemhaven::Task;

ProjectLoader::ProjectLoader(Stemhaven::TaskManager& tasks, QObject* parent)
    : QObject(parent),
      m_tasks(tasks) {}

void ProjectLoader::load(qint64 projectId) {
    m_wanted = projectId;
    m_again = m_isBusy;
    if (!m_isBusy && projectId >= 0)
        start();
}

void ProjectLoader::start() {
    m_isBusy = true;
    m_again = false;
    m_loading = m_wanted;

    // All three are queued at once; the last ends the load, whichever of them fails.
    const auto record = std::make_shared<ProjectRecord>();
    const auto failed = std::make_shared<bool>(false);
    const auto read = [&](const QString& statement, std::function<void(QSqlQuery&)> takeRow, bool isLast) {
        auto task = std::make_shared<QueryTask>(statement, m_tasks.mainDatabase());
        task->setQueryCallback([takeRow = std::move(takeRow)](const auto&, int, QSqlQuery* query) {
            while (query->next())
                takeRow(*query);
        });
        const auto end = [loader = QPointer(this), record, failed] {
            if (loader)
                loader->finish(*failed ? ProjectRecord() : *record);
        };
        task->setSuccessCallback([isLast, end](const auto&) {
            if (isLast)
                end();
        });
        task->setSqlErrorCallback(
            [isLast, end, failed, id = m_loading](const auto&, const DbException& error) {
                if (!std::exchange(*failed, true))
                    qCritical() << "Could not load project details for project_id:" << id << error;
                if (isLast)
                    end();
            });
        m_tasks.addTask(std::move(task));
    };
    read(
        UserDataStatements::selectProject(m_loading),
        [record](QSqlQuery& row) { *record = readProjectRecord(row); }, false);
    read(
        UserDataStatements::selectCollections(m_loading),
        [record](QSqlQuery& row) { record->collections.insert(row.value(0).toLongLong()); }, false);
    read(
        UserDataStatements::selectTags(m_loading),
        [record](QSqlQuery& row) { record->tags.insert(row.value(0).toLongLong()); }, true);
}

void ProjectLoader::finish(const ProjectRecord& record) {
    m_isBusy = false;
    if (m_wanted < 0)
        return;
    if (m_again || m_wanted != m_loading)
        start();
    else
        emit loaded(record);
}
