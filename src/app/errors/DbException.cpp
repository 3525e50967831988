#include "app/errors/DbException.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <array>
#include <ostream>

namespace Stemhaven {

namespace {

bool isOfStatement(const QSqlError& error) {
    // The numbers of SQLite: a wrong statement, a value that is too big, breaks a constraint or has the wrong
    // type. What is above the lowest byte tells variants apart.
    constexpr std::array<int, 4> ofStatement{1, 18, 19, 20};
    constexpr int kind = 0xff;
    bool converted = false;
    const int code = error.nativeErrorCode().toInt(&converted) & kind;
    return converted && std::find(ofStatement.begin(), ofStatement.end(), code) != ofStatement.end();
}

} // namespace

DbException::DbException(const QString& message) : Exception(message) {}

DbException::DbException(const QSqlDatabase& db, const QString& message)
    : DbException(db, nullptr, message) {}

DbException::DbException(const QSqlDatabase& db, const QSqlQuery* query, const QString& message)
    : Exception(message),
      m_databaseName(db.databaseName()),
      m_databaseErrorMessage(db.lastError().text()) {
    if (query == nullptr)
        return;
    m_queryErrorMessage = query->lastError().text();
    m_executedQuery = query->lastQuery();
    m_isStatementAtFault = isOfStatement(query->lastError());
}

DbException::DbException(const QSqlQuery* query, const QString& message)
    : Exception(message),
      m_queryErrorMessage(query->lastError().text()),
      m_executedQuery(query->executedQuery()),
      m_isStatementAtFault(isOfStatement(query->lastError())) {}

QString DbException::getDatabaseName() const {
    return m_databaseName;
}

QString DbException::getDatabaseErrorMessage() const {
    return m_databaseErrorMessage;
}

QString DbException::getQueryErrorMessage() const {
    return m_queryErrorMessage;
}

QString DbException::getExecutedQuery() const {
    return m_executedQuery;
}

DbException* DbException::clone() const {
    return new DbException(*this);
}

void DbException::raise() const {
    throw *this;
}

QDebug logFailure(const DbException& exception) {
    return exception.isRepeated() ? qDebug() : qCritical();
}

QDebug operator<<(QDebug debug, const DbException& exception) {
    const QDebugStateSaver saver(debug);
    debug.noquote() << "Database Error: " << exception.what() << "\tDatabase: " << exception.getDatabaseName()
                    << "\tDB error: " << exception.getDatabaseErrorMessage()
                    << "\tQuery: " << exception.getExecutedQuery()
                    << "\tQuery error: " << exception.getQueryErrorMessage();
    return debug;
}

std::ostream& operator<<(std::ostream& stream, const DbException& exception) {
    return stream << "Database Error: " << exception.what()
                  << "\tDatabase: " << exception.getDatabaseName().toStdString()
                  << "\tDB error: " << exception.getDatabaseErrorMessage().toStdString()
                  << "\tQuery: " << exception.getExecutedQuery().toStdString()
                  << "\tQuery error: " << exception.getQueryErrorMessage().toStdString();
}

} // namespace Stemhaven
