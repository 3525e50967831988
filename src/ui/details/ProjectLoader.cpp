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
#include <memory>
#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;
using Stemhaven::DbException;
using Stemhaven::QueryTask;
using Stemhaven::Task;

struct ProjectLoader::Outcome {
    ProjectRecord record;
    SelectionSummary summary;
    bool failed = false;
};

ProjectLoader::ProjectLoader(Stemhaven::TaskManager& tasks, QObject* parent)
    : QObject(parent),
      m_tasks(tasks) {}

void ProjectLoader::load(const QList<qint64>& projects) {
    m_wanted = projects;
    m_again = m_isBusy;
    if (!m_isBusy && !projects.isEmpty())
        start();
}

void ProjectLoader::start() {
    m_isBusy = true;
    m_again = false;
    m_loading = m_wanted;

    // All are queued at once; the last ends the load, whichever of them fails.
    const auto outcome = std::make_shared<Outcome>();
    const auto read = [&](const QString& statement, std::function<void(QSqlQuery&)> takeRow, bool isLast) {
        auto task = std::make_shared<QueryTask>(statement, m_tasks.mainDatabase());
        task->setQueryCallback([takeRow = std::move(takeRow)](const auto&, int, QSqlQuery* query) {
            while (query->next())
                takeRow(*query);
        });
        const auto end = [loader = QPointer(this), outcome] {
            if (loader)
                loader->finish(*outcome);
        };
        task->setSuccessCallback([isLast, end](const auto&) {
            if (isLast)
                end();
        });
        task->setSqlErrorCallback(
            [isLast, end, outcome, id = m_loading.constFirst()](const auto&, const DbException& error) {
                if (!std::exchange(outcome->failed, true))
                    qCritical() << "Could not load project details for project_id:" << id << error;
                if (isLast)
                    end();
            });
        m_tasks.addTask(std::move(task));
    };
    read(
        UserDataStatements::selectProject(m_loading.constFirst()),
        [outcome](QSqlQuery& row) { outcome->record = readProjectRecord(row); }, false);
    read(
        UserDataStatements::selectSummary(m_loading),
        [outcome](QSqlQuery& row) { outcome->summary = readSelectionSummary(row); }, false);
    read(
        UserDataStatements::selectEntryCounts(m_loading),
        [outcome](QSqlQuery& row) { addEntryCount(outcome->summary, row); }, true);
}

void ProjectLoader::finish(const Outcome& outcome) {
    // Whoever is told now may ask for others, which then wait for the end of this call.
    if (!m_wanted.isEmpty() && m_wanted == m_loading) {
        if (outcome.failed)
            emit failed();
        else
            emit loaded(outcome.record, outcome.summary);
    }
    m_isBusy = false;
    if (m_again && !m_wanted.isEmpty())
        start();
}
