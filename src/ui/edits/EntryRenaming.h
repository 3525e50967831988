#pragma once

#include "ui/edits/Edit.h"

/// Gives an entry of the sidebar another name.
class EntryRenaming : public Edit {
public:
    EntryRenaming(Texts texts, FilterType type, qint64 id, QString name);

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo(const QList<QStringList>& state) override;
    void renumber(const Renumbering& renumbering) override;

private:
    const FilterType m_type;
    qint64 m_id;
    const QString m_name;
    QString m_nameBefore;
};
