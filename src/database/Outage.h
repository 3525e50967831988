#pragma once

#include "app/errors/DbException.h"

namespace Stemhaven {

/// The time during which the database cannot be written, locked by another program or on a full disk say. The
/// log is to have it once, not once for each statement. On the worker.
class Outage {
public:
    /// Logs the failure under headline and returns it, marked as repeated when the outage goes on already.
    DbException logged(const char* headline, DbException error);

    void written();

private:
    bool m_isGoingOn = false;
};

} // namespace Stemhaven
