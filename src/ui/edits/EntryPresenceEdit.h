#pragma once

#include "ui/edits/Edit.h"

#include <memory>

/// Adds an entry to the sidebar, or removes one with all that refers to it. The way back from a removal
/// brings both back: under the same number, or, where that was given out again, under the next free one.
class EntryPresenceEdit : public Edit {
public:
    /// name is not empty.
    static std::unique_ptr<EntryPresenceEdit> addition(Texts texts, FilterType type, const QString& name);
    /// referencesFailureLog takes the place of the failure's log where what refers to the entry cannot be
    /// removed.
    static std::unique_ptr<EntryPresenceEdit>
    removal(Texts texts, FilterType type, qint64 id, const QString& referencesFailureLog);

    /// Of the entry; -1 for one that was not added yet.
    qint64 id() const { return m_id; }

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QString undoStateStatement() const override;
    QStringList undo(const QList<QStringList>& state) override;
    QList<Renumbering> renumberings() const override;
    std::optional<Entry> broughtEntry() const override;
    void renumber(const Renumbering& renumbering) override;
    void logFailure(const Stemhaven::DbException& error) const override;

private:
    enum class Kind { Addition, Removal };

    EntryPresenceEdit(Texts texts, Kind kind, FilterType type, qint64 id);
    QStringList takeAway(const QList<QStringList>& state);
    QStringList bringBack(const QList<QStringList>& state);

    const Kind m_kind;
    const FilterType m_type;
    QString m_referencesFailureLog;
    qint64 m_id;
    qint64 m_idBefore;      ///< what the entry was brought back from; the same unless it was given out again
    bool m_isThere = false; ///< after the last step
    QStringList m_literals;
    QList<qint64> m_projects; ///< those that referred to it when it was taken away
};
