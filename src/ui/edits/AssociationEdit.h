#pragma once

#include "ui/edits/ProjectEdit.h"

/// Puts projects into a collection or gives them a tag, or takes them out of a collection, a genre or a tag.
/// No project is ever mapped twice.
class AssociationEdit : public ProjectEdit {
public:
    enum class Direction { Associate, Disassociate };

    /// type is collections or tags, or genres to take them away.
    AssociationEdit(
        Texts texts, QList<qint64> projects, FilterType type, qint64 filterId, Direction direction);

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo(const QList<QStringList>& state) override;

    QList<qint64> changedProjects() const override { return m_changed; }

protected:
    void renumberEntry(FilterType type, qint64 from, qint64 to) override;

private:
    QStringList statements(Direction direction) const;

    FilterType m_type;
    qint64 m_filterId;
    Direction m_direction;
    QList<qint64> m_changed; ///< those for which the last redo changed something
};
