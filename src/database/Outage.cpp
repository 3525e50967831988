#include "database/Outage.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

DbException Outage::logged(const char* headline, DbException error) {
    if (!error.isStatementAtFault()) {
        if (m_loggedErrors.contains(error.getQueryErrorMessage()))
            error.markAsRepeated();
        m_loggedErrors.insert(error.getQueryErrorMessage());
    }
    logFailure(error) << headline << error;
    return error;
}

void Outage::written() {
    if (!std::exchange(m_loggedErrors, {}).isEmpty())
        qInfo() << "The database can be written again.";
}

} // namespace Stemhaven
