#pragma once

#include "database/Task.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Stemhaven {

class DbException;

/// Writes an edit of the user: reads what the edit is about to overwrite and writes it in one transaction, so
/// that nothing of it is done where a part of it fails. The manager runs one that is queued before it closes
/// the connections, for good or for a while.
class EditTask : public Task {
public:
    /// Makes the statements of the edit from the rows that it is about to overwrite. Runs on the worker.
    using Plan = std::function<QStringList(const QList<QStringList>& before)>;
    using SqlErrorCallback = std::function<void(std::shared_ptr<Task>, const DbException&)>;

    /// Gives the select whose rows go to the plan as texts; empty to read nothing. Runs on the worker.
    using StateStatement = std::function<QString()>;

    EditTask(StateStatement stateStatement, Plan plan, QSqlDatabase& database);

    void setSqlErrorCallback(SqlErrorCallback callback);

    unsigned short exec() override;

    bool outlastsShutDown() const override { return true; }

private:
    void readAndWrite();
    QList<QStringList> readState(const QString& statement);

    StateStatement m_stateStatement;
    Plan m_plan;
    SqlErrorCallback m_sqlErrorCallback;
};

} // namespace Stemhaven
