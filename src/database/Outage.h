#pragma once

#include "app/errors/DbException.h"

#include <QSet>
#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// A time during which a database cannot be written, because another program has locked it or the disk is
/// full. Sees to it that the log has each such error once, and not once for each statement. On the worker.
class Outage {
public:
    /// database outlives this.
    explicit Outage(const QSqlDatabase& database);

    /// Logs the error under headline and returns it, marked as repeated when the same one has been logged
    /// since the last write. One that is the statement's own fault is never a repetition.
    DbException logged(const char* headline, DbException error);

    /// A task over the database has succeeded. If it changed rows, the outage is over. A task that changed
    /// none says nothing: a locked or full database can still be read.
    void succeeded();

    /// The connection has been closed, and the next one counts its changes from 0.
    void connectionClosed();

private:
    qint64 rowsChanged() const;

    const QSqlDatabase& m_database;
    QSet<QString> m_loggedErrors;
    /// Over the connection, up to the last failure; rows of statements that were rolled back included.
    qint64 m_rowsChangedBefore = 0;
};

} // namespace Stemhaven
