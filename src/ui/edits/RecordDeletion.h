#pragma once

#include "ui/edits/ProjectEdit.h"

/// Deletes records with what they are associated with. The way back brings all of it back, under the same
/// ids. A record that has got one of them meanwhile gets another.
class RecordDeletion : public ProjectEdit {
public:
    using ProjectEdit::ProjectEdit;

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QString undoStateStatement() const override;
    QStringList undo(const QList<QStringList>& state) override;

    QList<Renumbering> renumberings() const override { return m_renumberings; }

    QList<qint64> changedProjects() const override { return projects(); }

protected:
    void renumberEntry(FilterType type, qint64 from, qint64 to) override;

private:
    struct Association {
        FilterType type;
        qint64 filterId;
        qint64 project;
    };

    struct NewNumber {
        FilterType type;
        qint64 from;
        qint64 to;
    };

    QStringList m_recordInserts;
    QList<Association> m_associations;
    /// Of genres and statuses, which the inserts have by their old numbers; in the order in which they
    /// changed.
    QList<NewNumber> m_newNumbers;
    QList<Renumbering> m_renumberings;
};
