#include "database/GenreTask.h"

#include "app/errors/DbException.h"
#include "database/Outage.h"
#include "database/RowCount.h"
#include "database/Transaction.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <utility>

namespace Stemhaven {

GenreTask::GenreTask(Assignment assignment, QSqlDatabase& database)
    : Task(&database),
      m_assignment(std::move(assignment)) {}

unsigned short GenreTask::exec() {
    try {
        m_failure = m_assignment.selectFailure;
        assign();
        return postSuccess();
    } catch (const DbException& failure) {
        const auto error = outage().logged("Exception caught in GenreTask::exec()!", failure);
        logFailure(error).noquote() << m_failure;
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in GenreTask::exec()!" << error.what();
    } catch (...) {
        qCritical() << "Unknown exception caught in GenreTask::exec()!";
    }
    return 0;
}

void GenreTask::assign() {
    Transaction transaction(database());
    QSqlQuery query(database());
    qint64 genreId = 0;
    if (!findOrMakeGenre(query, genreId))
        return;
    execute(query, m_assignment.update(genreId), m_assignment.updateFailure(genreId));
    if (query.numRowsAffected() == 0)
        return;
    query.finish();
    transaction.commit();
    outage().succeeded();
    qInfo().noquote() << m_assignment.success(genreId);
}

/// Returns whether genreId is that of a genre now.
bool GenreTask::findOrMakeGenre(QSqlQuery& query, qint64& genreId) {
    execute(query, m_assignment.select, m_assignment.selectFailure);
    const int rows = rowCount(&query);
    if (!query.next()) {
        execute(query, m_assignment.insert, m_assignment.insertFailure);
        genreId = query.lastInsertId().toLongLong();
        return true;
    }
    const auto stored = query.value(0);
    if (rows >= 2)
        qWarning().noquote() << m_assignment.duplicate + stored.toString();
    bool converted = false;
    genreId = stored.toLongLong(&converted);
    if (!converted)
        qCritical().noquote() << m_assignment.invalidId;
    return converted;
}

void GenreTask::execute(QSqlQuery& query, const QString& statement, const QString& failure) {
    qDebug() << "GenreTask::exec() -> " << statement;
    m_failure = failure;
    if (!query.exec(statement))
        throw DbException(&query, QStringLiteral("Query had an error"));
}

} // namespace Stemhaven
