#include "ui/table/CatalogueCheck.h"

#include "database/QueryBuilder.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"

#include <QPointer>

CatalogueCheck::CatalogueCheck(Stemhaven::TaskManager& tasks, QObject* parent)
    : QObject(parent),
      m_tasks(tasks) {}

void CatalogueCheck::start() {
    Stemhaven::QueryBuilder everything;
    everything.hideCompletedTracks(false);
    everything.hideIgnoredTracks(false);

    auto task = std::make_shared<Stemhaven::QueryTask>(everything.select(), m_tasks.mainDatabase());
    task->setQueryCallback([check = QPointer(this)](const auto& /*task*/, int rowCount, auto* /*query*/) {
        if (check)
            emit check->finished(rowCount == 0);
    });
    m_tasks.addTask(std::move(task));
}
