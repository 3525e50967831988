#include "ui/table/HiddenCount.h"

#include "app/errors/DbException.h"
#include "database/QueryBuilder.h"
#include "database/QueryTask.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QPointer>
#include <QSqlQuery>
#include <QVariant>

HiddenCount::HiddenCount(
    Stemhaven::TaskManager& tasks, const Stemhaven::QueryBuilder& builder, QObject* parent)
    : QObject(parent),
      m_tasks(tasks),
      m_builder(builder) {}

void HiddenCount::start() {
    auto task = std::make_shared<Stemhaven::QueryTask>(m_builder.countHidden(), m_tasks.mainDatabase());
    task->setQueryCallback([count = QPointer(this)](const auto& /*task*/, int /*rowCount*/, auto* query) {
        if (count)
            emit count->counted(query->next() ? query->value(0).toInt() : 0);
    });
    task->setSqlErrorCallback([count = QPointer(this)](const auto& /*task*/, const auto& error) {
        qWarning() << "Could not count the hidden projects:" << error;
        if (count)
            emit count->counted(0);
    });
    m_tasks.addTask(std::move(task));
}
