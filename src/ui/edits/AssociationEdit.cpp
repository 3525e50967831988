#include "ui/edits/AssociationEdit.h"

#include "database/UserDataStatements.h"

#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;

AssociationEdit::AssociationEdit(
    Texts texts, QList<qint64> projects, FilterType type, qint64 filterId, Direction direction)
    : ProjectEdit(std::move(texts), std::move(projects)),
      m_type(type),
      m_filterId(filterId),
      m_direction(direction) {}

QString AssociationEdit::stateStatement() const {
    return m_direction == Direction::Associate
        ? UserDataStatements::selectNotAssociated(m_type, m_filterId, projects())
        : UserDataStatements::selectAssociated(m_type, m_filterId, projects());
}

QStringList AssociationEdit::redo(const QList<QStringList>& state) {
    m_changed.clear();
    for (const QStringList& row : state)
        m_changed.append(row.constFirst().toLongLong());
    return statements(m_direction);
}

QStringList AssociationEdit::undo(const QList<QStringList>& /*state*/) {
    return statements(m_direction == Direction::Associate ? Direction::Disassociate : Direction::Associate);
}

void AssociationEdit::renumberEntry(FilterType type, qint64 from, qint64 to) {
    if (type == m_type && from == m_filterId)
        m_filterId = to;
}

QStringList AssociationEdit::statements(Direction direction) const {
    QStringList statements;
    for (const qint64 project : m_changed) {
        statements.append(
            direction == Direction::Associate
                ? UserDataStatements::associate(m_type, m_filterId, project)
                : UserDataStatements::disassociate(m_type, m_filterId, project));
    }
    return statements;
}
