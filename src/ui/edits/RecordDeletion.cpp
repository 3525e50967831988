#include "ui/edits/RecordDeletion.h"

#include "database/UserDataStatements.h"

#include <algorithm>

namespace UserDataStatements = Stemhaven::UserDataStatements;

QString RecordDeletion::stateStatement() const {
    return UserDataStatements::selectAsInserts(projects());
}

QStringList RecordDeletion::redo(const QList<QStringList>& state) {
    m_recordInserts.clear();
    m_associations.clear();
    m_newNumbers.clear();
    m_renumberings.clear();
    for (const QStringList& row : state) {
        const QString& table = row[0];
        if (table == QLatin1String("projects"))
            m_recordInserts.append(row[2]);
        else
            m_associations.append(
                {table == QLatin1String("tags") ? FilterType::TAGS : FilterType::COLLECTIONS,
                 row[1].toLongLong(), row[2].toLongLong()});
    }

    QStringList statements;
    if (m_recordInserts.isEmpty())
        return statements;
    for (const qint64 project : projects())
        statements << UserDataStatements::deleteProject(project)
                   << UserDataStatements::deleteAssociations(project);
    return statements;
}

QString RecordDeletion::undoStateStatement() const {
    return UserDataStatements::selectTaken(projects());
}

QStringList RecordDeletion::undo(const QList<QStringList>& state) {
    m_renumberings.clear();
    QStringList statements;
    qint64 last = *std::max_element(projects().begin(), projects().end());
    for (const QStringList& row : state) {
        const qint64 taken = row.value(0).toLongLong();
        last = std::max(last, row.value(1).toLongLong()) + 1;
        statements << UserDataStatements::moveProject(taken, last);
        // Edits of what is undone by now were made of it under the old number.
        m_renumberings.append({Renumbering::Scope::LaterEdits, std::nullopt, taken, last});
    }
    statements << m_recordInserts;
    for (const Association& association : m_associations)
        statements << UserDataStatements::associate(
            association.type, association.filterId, association.project);
    for (const qint64 project : projects()) {
        for (const auto& [type, from, to] : m_newNumbers)
            statements << UserDataStatements::replaceReference(type, from, to, project);
        statements << UserDataStatements::settleRestoredProject(project);
    }
    return statements;
}

void RecordDeletion::renumberEntry(FilterType type, qint64 from, qint64 to) {
    for (Association& association : m_associations) {
        if (association.type == type && association.filterId == from)
            association.filterId = to;
    }
    if (type == FilterType::GENRES || filterTypeIsStatus(type))
        m_newNumbers.append({type, from, to});
}
