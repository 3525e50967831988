#include "ui/edits/RecordDeletion.h"

#include "database/UserDataStatements.h"

namespace UserDataStatements = Stemhaven::UserDataStatements;

QString RecordDeletion::stateStatement() const {
    return UserDataStatements::selectAsInserts(projects());
}

QStringList RecordDeletion::redo(const QList<QStringList>& state) {
    m_recordInserts.clear();
    m_associations.clear();
    m_removedEntries.clear();
    for (const QStringList& row : state) {
        const QString& table = row[0];
        const QString& insert = row[2];
        if (table == QLatin1String("projects"))
            m_recordInserts.append(insert);
        else
            m_associations.append(
                {table == QLatin1String("tags") ? FilterType::TAGS : FilterType::COLLECTIONS,
                 row[1].toLongLong(), insert});
    }

    QStringList statements;
    if (m_recordInserts.isEmpty())
        return statements;
    for (const qint64 project : projects())
        statements << UserDataStatements::deleteProject(project)
                   << UserDataStatements::deleteAssociations(project);
    return statements;
}

QStringList RecordDeletion::undo() const {
    QStringList statements;
    for (const qint64 project : projects())
        statements << UserDataStatements::freeProjectId(project);
    statements << m_recordInserts;
    for (const Association& association : m_associations)
        statements << association.insert;
    for (const qint64 project : projects()) {
        for (const auto& [type, id] : m_removedEntries)
            statements << UserDataStatements::clearReference(type, id, project);
        statements << UserDataStatements::settleRestoredProject(project);
    }
    return statements;
}

bool RecordDeletion::forgetEntry(FilterType type, qint64 id) {
    m_associations.removeIf([&](const Association& association) {
        return association.type == type && association.filterId == id;
    });
    if (type == FilterType::GENRES || filterTypeIsStatus(type))
        m_removedEntries.append({type, id});
    return true;
}
