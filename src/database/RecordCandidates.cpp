#include "database/RecordCandidates.h"

#include "app/errors/DbException.h"
#include "database/ProjectStatements.h"

#include <QDebug>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

namespace Stemhaven {

namespace {

/// Logs a row whose id is no number, and leaves it out.
QList<ProjectRecord> select(QSqlDatabase& database, const QString& statement) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(statement))
        throw DbException(&query, QStringLiteral("Query had an error"));
    QList<ProjectRecord> records;
    while (query.next()) {
        bool converted = false;
        const auto id = query.value(0).toULongLong(&converted);
        if (!converted) {
            qCritical() << "Could not convert project_id!";
            continue;
        }
        ProjectRecord record;
        record.id = static_cast<long long>(id);
        record.filepath = query.value(1).toString();
        record.filename = query.value(2).toString();
        record.sufid = query.value(3).toString();
        record.lastModified = query.value(4).toLongLong();
        records.append(record);
    }
    return records;
}

QStringList selectFormerIdentities(QSqlDatabase& database, long long projectId) {
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(ProjectStatements::selectFormerIdentities(projectId)))
        throw DbException(&query, QStringLiteral("Query had an error"));
    QStringList identities;
    while (query.next())
        identities.append(query.value(0).toString());
    return identities;
}

} // namespace

std::optional<ProjectRecord> selectRecord(QSqlDatabase& database, long long projectId) {
    const auto records = select(database, ProjectStatements::selectById(projectId));
    return records.isEmpty() ? std::nullopt : std::optional(records.first());
}

QList<ProjectRecord> selectAt(QSqlDatabase& database, const QString& path) {
    const qsizetype nameBegin = path.lastIndexOf(u'/') + 1;
    return select(database, ProjectStatements::selectByPath(path.left(nameBegin), path.mid(nameBegin)));
}

RecordCandidates selectCandidates(
    QSqlDatabase& database, const ProjectDetails& details, const std::optional<RecordCandidates::Note>& note,
    const QStringList& priorPaths) {
    RecordCandidates found;
    const QString sufid = details.sufid.toString();
    found.byIdentity = select(database, ProjectStatements::selectBySufid(sufid));
    found.byPath = select(database, ProjectStatements::selectByPath(details.filepath, details.filename));
    for (const auto& path : priorPaths)
        found.byPriorPath.append(selectAt(database, path));
    if (!note)
        return found;
    found.byNotedId = selectRecord(database, note->first);
    if (!found.byNotedId) {
        found.byNotedIdentity =
            select(database, ProjectStatements::selectBySufid(QString::fromStdString(note->second)));
    } else {
        found.formerOfNotedId = selectFormerIdentities(database, found.byNotedId->id);
    }
    return found;
}

} // namespace Stemhaven
