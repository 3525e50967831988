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
        records.append(
            {static_cast<long long>(id), query.value(1).toString(), query.value(2).toString(),
             query.value(3).toString()});
    }
    return records;
}

} // namespace

RecordCandidates selectCandidates(
    QSqlDatabase& database, const ProjectDetails& details, qint64 savedAt,
    const std::optional<RecordCandidates::Note>& note, const QStringList& priorPaths) {
    RecordCandidates found;
    const QString sufid = details.sufid.toString();
    found.byIdentity = select(database, ProjectStatements::selectBySufid(sufid));
    if (!found.byIdentity.isEmpty()) {
        for (const auto& record :
             select(database, ProjectStatements::selectByTraits(sufid, details.filename, savedAt)))
            found.byTraits.append(record.id);
    }
    found.byPath = select(database, ProjectStatements::selectByPath(details.filepath, details.filename));
    for (const auto& path : priorPaths) {
        const qsizetype nameBegin = path.lastIndexOf(u'/') + 1;
        found.byPriorPath.append(
            select(database, ProjectStatements::selectByPath(path.left(nameBegin), path.mid(nameBegin))));
    }
    if (!note)
        return found;
    const auto noted = select(database, ProjectStatements::selectById(note->first));
    if (noted.isEmpty()) {
        found.byNotedIdentity =
            select(database, ProjectStatements::selectBySufid(QString::fromStdString(note->second)));
    } else {
        found.byNotedId = noted.first();
    }
    return found;
}

} // namespace Stemhaven
