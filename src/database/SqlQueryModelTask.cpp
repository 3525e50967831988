#include "database/SqlQueryModelTask.h"

#include "app/errors/DbException.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>

#include <utility>

namespace Stemhaven {

SqlQueryModelTask::SqlQueryModelTask(
    QString sql, std::recursive_mutex& modelMutex, ModelSlot slot, QSqlDatabase& database)
    : Task(&database),
      m_sql(std::move(sql)),
      m_modelMutex(modelMutex),
      m_slot(std::move(slot)) {}

void SqlQueryModelTask::setPreparation(Preparation preparation) {
    m_preparation = std::move(preparation);
}

unsigned short SqlQueryModelTask::exec() {
    try {
        auto model = std::make_unique<QSqlQueryModel>();
        fill(*model);
        if (m_preparation)
            m_preparation(*model);
        {
            const std::lock_guard lock(m_modelMutex);
            model.reset(std::exchange(*m_slot, model.release()));
        }
        return postSuccess();
    } catch (const Exception& error) {
        return postOrLogError(QStringLiteral("Exception caught in SqlQueryModelTask::exec()!"), error);
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in SqlQueryModelTask::exec()!" << error.what();
        return postError(Exception(QString::fromUtf8(error.what())));
    } catch (...) {
        qCritical() << "Unknown exception caught in SqlQueryModelTask::exec()!";
        return postError(Exception(QStringLiteral("Unknown exception caught...")));
    }
}

void SqlQueryModelTask::fill(QSqlQueryModel& model) const {
    QSqlQuery query(database());
    query.exec(m_sql);
    if (query.lastError().type() != QSqlError::NoError)
        throw DbException(&query, QStringLiteral("Query had an error"));
    model.setQuery(std::move(query));
    while (model.canFetchMore())
        model.fetchMore();
    // The model itself takes a row that cannot be read for the end.
    QSqlQuery filled = model.query();
    if (filled.lastError().type() != QSqlError::NoError)
        throw DbException(&filled, QStringLiteral("Query had an error"));
}

} // namespace Stemhaven
