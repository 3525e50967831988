#pragma once

class QSqlDatabase;

namespace Stemhaven {

/// A transaction over a connection, rolled back at the end of its scope unless it was committed. On the
/// worker.
class Transaction {
public:
    /// Begins with the right to write, because a reader that asks for it later may be refused. Throws
    /// DbException.
    explicit Transaction(QSqlDatabase& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Throws DbException; the transaction is rolled back then.
    void commit();

private:
    QSqlDatabase& m_database;
    bool m_committed = false;
};

} // namespace Stemhaven
