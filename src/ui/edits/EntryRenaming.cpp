#include "ui/edits/EntryRenaming.h"

#include "database/FilterStatements.h"

#include <utility>

namespace FilterStatements = Stemhaven::FilterStatements;

EntryRenaming::EntryRenaming(Texts texts, FilterType type, qint64 id, QString name)
    : Edit(std::move(texts)),
      m_type(type),
      m_id(id),
      m_name(std::move(name)) {}

QString EntryRenaming::stateStatement() const {
    return FilterStatements::selectName(m_type, m_id);
}

QStringList EntryRenaming::redo(const QList<QStringList>& state) {
    if (state.isEmpty() || state.constFirst().constFirst() == m_name)
        return {};
    m_nameBefore = state.constFirst().constFirst();
    return {FilterStatements::rename(m_type, m_id, m_name)};
}

QStringList EntryRenaming::undo(const QList<QStringList>& /*state*/) {
    return {FilterStatements::rename(m_type, m_id, m_nameBefore)};
}

void EntryRenaming::renumber(const Renumbering& renumbering) {
    if (renumbering.entryType == m_type && renumbering.from == m_id)
        m_id = renumbering.to;
}
