#include "database/ProjectChanges.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"
#include "database/Transaction.h"
#include "database/UserDataStatements.h"
#include "project/ProjectData.h"

#include <QDebug>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

namespace {

void execute(QSqlQuery& query, const QString& statement) {
    qDebug() << "ProjectChanges::write() -> " << statement;
    if (!query.exec(statement))
        throw DbException(&query, QStringLiteral("Query had an error"));
}

} // namespace

void ProjectChanges::addProject(
    const ProjectDetails& details, const ProjectData& data, qint64 readAt,
    std::optional<long long> sameUserDataAs) {
    const auto statement = ProjectStatements::insert(details, data, readAt);
    qDebug() << "Created task for new project INSERT: " << statement;
    m_changes.append({statement, {details, 0, true, sameUserDataAs.has_value()}, sameUserDataAs});
}

void ProjectChanges::updateProject(
    const ProjectDetails& details, const ProjectData& data, qint64 readAt, long long projectId) {
    m_changes.append({ProjectStatements::update(details, data, readAt, projectId), {details, projectId}, {}});
}

void ProjectChanges::moveProject(const ProjectDetails& details, long long projectId) {
    m_changes.append({ProjectStatements::move(details, projectId), {details, projectId}, {}});
}

void ProjectChanges::giveUpIdentity(long long projectId) {
    m_releases << ProjectStatements::rememberIdentity(projectId, {})
               << ProjectStatements::giveUpIdentity(projectId);
}

void ProjectChanges::giveUpPlace(long long projectId) {
    m_releases.append(ProjectStatements::giveUpPlace(projectId));
}

QList<ProjectChanges::Written> ProjectChanges::write(QSqlDatabase& database) const {
    Transaction transaction(database);
    QSqlQuery query(database);
    for (const auto& statement : m_releases)
        execute(query, statement);
    QList<Written> written;
    for (const auto& change : m_changes) {
        if (!change.written.isNew)
            execute(
                query,
                ProjectStatements::rememberIdentity(change.written.projectId, change.written.details.sufid));
        execute(query, change.statement);
        Written& done = written.emplaceBack(change.written);
        if (!done.isNew) {
            done.isLost = query.numRowsAffected() == 0;
            continue;
        }
        done.projectId = query.lastInsertId().toLongLong();
        if (!change.sameUserDataAs)
            continue;
        const auto copies = UserDataStatements::copy(*change.sameUserDataAs, done.projectId);
        for (const auto& statement : copies)
            execute(query, statement);
    }
    query.finish();
    transaction.commit();
    return written;
}

} // namespace Stemhaven
