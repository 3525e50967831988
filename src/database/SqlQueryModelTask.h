#pragma once

#include "database/Task.h"

#include <QString>

#include <functional>
#include <memory>
#include <mutex>

class QSqlQueryModel;

namespace Stemhaven {

/// Fills a new query model to its last row and puts it in the place of another.
///
/// The model mutex is held for the exchange alone, so that a reader never waits for the filling and never
/// sees half a result. The old model is destroyed on the worker. A statement that fails leaves the slot as it
/// was.
class SqlQueryModelTask : public Task {
public:
    /// The place of the model, shared with the task so that it is there when the task runs. modelMutex
    /// outlives both.
    using ModelSlot = std::shared_ptr<QSqlQueryModel*>;

    SqlQueryModelTask(QString sql, std::recursive_mutex& modelMutex, ModelSlot slot, QSqlDatabase& database);

    /// Runs on the worker with the filled model, before anyone else sees it.
    using Preparation = std::function<void(QSqlQueryModel&)>;
    void setPreparation(Preparation preparation);

    unsigned short exec() override;

private:
    void fill(QSqlQueryModel& model) const;

    QString m_sql;
    std::recursive_mutex& m_modelMutex;
    ModelSlot m_slot;
    Preparation m_preparation;
};

} // namespace Stemhaven
