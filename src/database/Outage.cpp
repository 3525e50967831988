#include "database/Outage.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace Stemhaven {

Outage::Outage(const QSqlDatabase& database) : m_database(database) {}

DbException Outage::logged(const char* headline, DbException error) {
    if (!error.isStatementAtFault()) {
        if (m_loggedErrors.contains(error.getQueryErrorMessage()))
            error.markAsRepeated();
        m_loggedErrors.insert(error.getQueryErrorMessage());
    }
    if (!m_loggedErrors.isEmpty())
        m_rowsChangedBefore = rowsChanged();
    logFailure(error) << headline << error;
    return error;
}

void Outage::succeeded() {
    if (m_loggedErrors.isEmpty() || rowsChanged() <= m_rowsChangedBefore)
        return;
    m_loggedErrors.clear();
    qInfo() << "The database can be written again.";
}

void Outage::connectionClosed() {
    m_rowsChangedBefore = 0;
}

qint64 Outage::rowsChanged() const {
    // The count that a query gives is no use: after a statement that changes no rows by its nature, it is
    // still that of the statement before.
    QSqlQuery query(m_database);
    const bool isKnown = query.exec(QStringLiteral("SELECT total_changes()")) && query.next();
    return isKnown ? query.value(0).toLongLong() : 0;
}

} // namespace Stemhaven
