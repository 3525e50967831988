#pragma once

#include "database/Task.h"

#include <QList>
#include <QString>

namespace Stemhaven {

class DbException;

/// Runs statements one after another, up to the first that fails. What was done before that stays, unless all
/// of them are one transaction.
class MultistatementTask : public Task {
public:
    using SqlErrorCallback = std::function<void(std::shared_ptr<Task>, const DbException&)>;

    enum class Scope { Statement, Transaction };

    MultistatementTask(QList<QString> statements, QSqlDatabase& database, Scope scope = Scope::Statement);

    void setSqlErrorCallback(SqlErrorCallback callback);

    unsigned short exec() override;

private:
    void executeAll();

    QList<QString> m_statements;
    Scope m_scope;
    SqlErrorCallback m_sqlErrorCallback;
};

} // namespace Stemhaven
