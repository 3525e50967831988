#include "ui/edits/AssociationEdit.h"

#include "database/UserDataStatements.h"

#include <QSet>

#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;

AssociationEdit::AssociationEdit(
    Texts texts, QList<qint64> projects, FilterType type, qint64 filterId, Direction direction)
    : ProjectEdit(std::move(texts), std::move(projects)),
      m_type(type),
      m_filterId(filterId),
      m_direction(direction) {}

QString AssociationEdit::stateStatement() const {
    return UserDataStatements::selectAssociated(m_type, m_filterId, projects());
}

QStringList AssociationEdit::redo(const QList<QStringList>& state) {
    QSet<qint64> associated;
    for (const QStringList& row : state)
        associated.insert(row.value(0).toLongLong());

    m_changed.clear();
    for (const qint64 project : projects()) {
        if (associated.contains(project) != (m_direction == Direction::Associate))
            m_changed.append(project);
    }
    return statements(m_direction);
}

QStringList AssociationEdit::undo() const {
    return statements(m_direction == Direction::Associate ? Direction::Disassociate : Direction::Associate);
}

bool AssociationEdit::forgetEntry(FilterType type, qint64 id) {
    return type != m_type || id != m_filterId;
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
