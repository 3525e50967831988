#pragma once

#include <QString>

class QSqlDatabase;
class QSqlQuery;

namespace Stemhaven {

/// A transaction with the right to write from its beginning on. Rolls back at the end of its scope, unless it
/// was committed. On the worker.
class Transaction {
public:
    /// Throws DbException, as the other functions do.
    explicit Transaction(QSqlDatabase& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void execute(QSqlQuery& query, const QString& statement) const;
    void commit();

private:
    QSqlDatabase& m_database;
    bool m_committed = false;
};

} // namespace Stemhaven
