#pragma once

#include "app/errors/DbException.h"

#include <QSet>
#include <QString>

namespace Stemhaven {

/// The time during which the database cannot be written, locked by another program or on a full disk say. The
/// log is to have it once, not once for each statement. On the worker.
class Outage {
public:
    /// Logs the failure under headline and returns it, marked as repeated when the same has been logged since
    /// something could be written.
    DbException logged(const char* headline, DbException error);

    void written();

private:
    QSet<QString> m_loggedErrors; // one that comes on top is to be seen, too
};

} // namespace Stemhaven
