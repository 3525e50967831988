#pragma once

#include "database/Task.h"

#include <QList>
#include <QString>

namespace Stemhaven {

class DbException;

/// Runs statements one after another, without a transaction, up to the first that fails.
class MultistatementTask : public Task {
public:
    using SqlErrorCallback = std::function<void(std::shared_ptr<Task>, const DbException&)>;

    MultistatementTask(QList<QString> statements, QSqlDatabase& database);

    void setSqlErrorCallback(SqlErrorCallback callback);

    unsigned short exec() override;

private:
    void executeAll();

    QList<QString> m_statements;
    SqlErrorCallback m_sqlErrorCallback;
};

} // namespace Stemhaven
