#pragma once

#include "ui/edits/ProjectEdit.h"

/// Deletes records with what they are associated with. The way back brings all of it back, under the same
/// ids.
class RecordDeletion : public ProjectEdit {
public:
    using ProjectEdit::ProjectEdit;

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo() const override;
    bool forgetEntry(FilterType type, qint64 id) override;

private:
    struct Association {
        FilterType type;
        qint64 filterId;
        QString insert;
    };

    QStringList m_recordInserts;
    QList<Association> m_associations;
    /// Genres and statuses that were removed after the records.
    QList<std::pair<FilterType, qint64>> m_removedEntries;
};
