#include "database/Outage.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

DbException Outage::logged(const char* headline, DbException error) {
    if (!error.isStatementAtFault() && std::exchange(m_isGoingOn, true))
        error.markAsRepeated();
    logFailure(error) << headline << error;
    return error;
}

void Outage::written() {
    if (std::exchange(m_isGoingOn, false))
        qInfo() << "The database can be written again.";
}

} // namespace Stemhaven
