#pragma once

#include "app/errors/DbException.h"

#include <QSet>
#include <QString>

namespace Stemhaven {

/// A time during which the database cannot be written, because another program has locked it or the disk is
/// full. Sees to it that the log has each such error once, and not once for each statement. On the worker.
class Outage {
public:
    /// Logs the error under headline and returns it, marked as repeated when the same one has been logged
    /// since the last write. One that is the statement's own fault is never a repetition.
    DbException logged(const char* headline, DbException error);

    /// Something has been written: the outage, if there was one, is over.
    void written();

private:
    QSet<QString> m_loggedErrors;
};

} // namespace Stemhaven
