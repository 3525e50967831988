#pragma once

#include "database/Task.h"

#include <QString>

class QSqlQuery;

namespace Stemhaven {

class DbException;

/// Runs one SQL statement.
class QueryTask : public Task {
public:
    /// For a select. All rows have been fetched, so they can be read on the GUI thread. The query is
    /// destroyed after the callback has ended.
    using QueryCallback = std::function<void(std::shared_ptr<Task>, int rowCount, QSqlQuery*)>;
    /// For any other statement whose text contains "insert", in any letter case and anywhere.
    using OnInsertCallback = std::function<void(std::shared_ptr<Task>, long long insertId)>;
    using SqlErrorCallback = std::function<void(std::shared_ptr<Task>, const DbException&)>;

    QueryTask(QString sql, QSqlDatabase& database);

    void setQueryCallback(QueryCallback callback);
    void setOnInsertCallback(OnInsertCallback callback);
    void setSqlErrorCallback(SqlErrorCallback callback);

    unsigned short exec() override;

private:
    unsigned short execute();
    unsigned short postResults(std::unique_ptr<QSqlQuery> query);

    QString m_sql;
    QueryCallback m_queryCallback;
    OnInsertCallback m_onInsertCallback;
    SqlErrorCallback m_sqlErrorCallback;
};

} // namespace Stemhaven
