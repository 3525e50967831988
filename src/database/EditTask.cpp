#include "database/EditTask.h"

#include "app/errors/DbException.h"
#include "database/CallbackRunners.h"
#include "database/Outage.h"
#include "database/Transaction.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <utility>

namespace Stemhaven {

namespace {

void execute(const QSqlDatabase& database, QSqlQuery& query, const QString& statement) {
    qDebug() << "EditTask::exec() -> " << statement;
    if (!query.exec(statement))
        throw DbException(database, &query, QStringLiteral("Query had an error"));
}

} // namespace

EditTask::EditTask(StateStatement stateStatement, Plan plan, QSqlDatabase& database)
    : Task(&database),
      m_stateStatement(std::move(stateStatement)),
      m_plan(std::move(plan)) {}

void EditTask::setSqlErrorCallback(SqlErrorCallback callback) {
    m_sqlErrorCallback = std::move(callback);
}

unsigned short EditTask::exec() {
    const auto posted = [this](const DbException& error) -> unsigned short {
        if (!m_sqlErrorCallback)
            return 0;
        return post([this, error, self = shared_from_this()] {
            invokeSqlErrorCallback(m_sqlErrorCallback, self, error);
        });
    };
    try {
        readAndWrite();
        outage().succeeded();
        return postSuccess();
    } catch (const DbException& failure) {
        if (callbacksHaveCeased()) {
            // Nobody can be asked any more, so each is told, also where the trouble is known.
            qCritical() << "The program ends, and an edit could not be saved." << failure;
            return 0;
        }
        return posted(outage().logged("Exception caught in EditTask::exec()!", failure));
    } catch (const std::exception& error) {
        qCritical() << "Exception caught in EditTask::exec()!" << error.what();
        return posted(DbException(QString::fromUtf8(error.what())));
    } catch (...) {
        qCritical() << "Unknown exception caught in EditTask::exec()!";
        return posted(DbException(QStringLiteral("Unknown exception caught...")));
    }
}

void EditTask::readAndWrite() {
    Transaction transaction(database());
    const QString state = m_stateStatement();
    const QStringList statements = m_plan(state.isEmpty() ? QList<QStringList>() : readState(state));
    QSqlQuery query(database());
    for (const auto& statement : statements)
        execute(database(), query, statement);
    query.finish();
    transaction.commit();
}

QList<QStringList> EditTask::readState(const QString& statement) {
    QSqlQuery query(database());
    query.setForwardOnly(true);
    execute(database(), query, statement);
    QList<QStringList> rows;
    const int columns = query.record().count();
    while (query.next()) {
        QStringList& row = rows.emplaceBack();
        for (int column = 0; column < columns; ++column)
            row.append(query.value(column).toString());
    }
    return rows;
}

} // namespace Stemhaven
