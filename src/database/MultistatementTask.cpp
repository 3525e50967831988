#include "database/MultistatementTask.h"

#include "app/errors/DbException.h"
#include "database/CallbackRunners.h"
#include "database/Outage.h"

#include <QDebug>
#include <QSqlError>
#include <QSqlQuery>

#include <utility>

namespace Stemhaven {

MultistatementTask::MultistatementTask(QList<QString> statements, QSqlDatabase& database)
    : Task(&database),
      m_statements(std::move(statements)) {}

void MultistatementTask::setSqlErrorCallback(SqlErrorCallback callback) {
    m_sqlErrorCallback = std::move(callback);
}

unsigned short MultistatementTask::exec() {
    try {
        executeAll();
        outage().written();
        return postSuccess();
    } catch (const DbException& failure) {
        const auto error = outage().logged("Exception caught in MultistatementTask::exec()!", failure);
        if (m_sqlErrorCallback) {
            return post([this, error, self = shared_from_this()] {
                invokeSqlErrorCallback(m_sqlErrorCallback, self, error);
            });
        }
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in MultistatementTask::exec()!" << error.what();
    } catch (...) {
        qCritical() << "Unknown exception caught in QueryTask::exec()!";
    }
    return 0;
}

void MultistatementTask::executeAll() {
    QSqlQuery query(database());
    for (const auto& statement : std::as_const(m_statements)) {
        qDebug() << "MultistatementTask::exec() -> " << statement;
        query.exec(statement);
        if (query.lastError().type() != QSqlError::NoError)
            throw DbException(&query, QStringLiteral("Query had an error"));
        if (query.isSelect())
            qWarning() << "Multistatement query was SELECT. Result set is ignored!";
        query.finish();
    }
}

} // namespace Stemhaven
