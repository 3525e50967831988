#include "database/EditTask.h"

#include "app/errors/DbException.h"
#include "database/CallbackRunners.h"
#include "database/Outage.h"

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

/// Rolls back at the end of its scope, unless it was committed.
class Transaction {
public:
    explicit Transaction(QSqlDatabase& database) : m_database(database) {
        // At once with the right to write: a reader that wants it later may be refused it.
        QSqlQuery query(m_database);
        execute(m_database, query, QStringLiteral("BEGIN IMMEDIATE"));
    }

    ~Transaction() {
        if (!m_committed)
            QSqlQuery(m_database).exec(QStringLiteral("ROLLBACK"));
    }

    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit() {
        QSqlQuery query(m_database);
        execute(m_database, query, QStringLiteral("COMMIT"));
        m_committed = true;
    }

private:
    QSqlDatabase& m_database;
    bool m_committed = false;
};

} // namespace

EditTask::EditTask(StateStatement stateStatement, Plan plan, QSqlDatabase& database)
    : Task(&database),
      m_stateStatement(std::move(stateStatement)),
      m_plan(std::move(plan)) {}

void EditTask::setSqlErrorCallback(SqlErrorCallback callback) {
    m_sqlErrorCallback = std::move(callback);
}

unsigned short EditTask::exec() {
    const auto failed = [this](const DbException& error) -> unsigned short {
        qCritical() << "Exception caught in EditTask::exec()!" << error;
        if (!m_sqlErrorCallback)
            return 0;
        return post([this, error, self = shared_from_this()] {
            invokeSqlErrorCallback(m_sqlErrorCallback, self, error);
        });
    };
    try {
        readAndWrite();
        outage().written();
        return postSuccess();
    } catch (const DbException& error) {
        return failed(error);
    } catch (const std::exception& error) {
        return failed(DbException(QString::fromUtf8(error.what())));
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
