#pragma once

#include "app/errors/Exception.h"

class QSqlDatabase;
class QSqlQuery;

namespace Stemhaven {

/// A failure of a database, with what is needed to understand it from the log alone.
class DbException : public Exception {
public:
    explicit DbException(const QString& message);
    DbException(const QSqlDatabase& db, const QString& message);
    /// query may be null; its text is taken as it was prepared.
    DbException(const QSqlDatabase& db, const QSqlQuery* query, const QString& message);
    /// The query's text is taken as it was executed.
    DbException(const QSqlQuery* query, const QString& message);

    QString getDatabaseName() const;
    QString getDatabaseErrorMessage() const;
    QString getQueryErrorMessage() const;
    QString getExecutedQuery() const;

    /// Whether the statement would fail again on a database in the best of states. False for a database that
    /// is locked, full or out of reach.
    bool isStatementAtFault() const { return m_isStatementAtFault; }

    /// Whether the same trouble has been logged already, for another statement, and has not ended since.
    bool isRepeated() const { return m_isRepeated; }

    void markAsRepeated() { m_isRepeated = true; }

    DbException* clone() const override;
    void raise() const override;

private:
    QString m_databaseName;
    QString m_databaseErrorMessage;
    QString m_queryErrorMessage;
    QString m_executedQuery;
    bool m_isStatementAtFault = false;
    bool m_isRepeated = false;
};

/// The stream for a message about what failed with exception: critical, or for debugging if it is repeated.
QDebug logFailure(const DbException& exception);

QDebug operator<<(QDebug debug, const DbException& exception);
std::ostream& operator<<(std::ostream& stream, const DbException& exception);

} // namespace Stemhaven
