#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Stemhaven {
class DbException;
}

/// One change that the user makes in the catalogue, and the way back. It makes the statements; the history
/// has them run. The functions that make statements, and renumber(), are called on the database's worker, one
/// at a time, all others on the GUI thread.
class Edit {
public:
    /// What an edit is called to the user, and what its failure is called.
    struct Texts {
        QString name;         ///< as in "Undo Rating"
        QString failureTitle; ///< of the alert
        QString failureLog;
        QString successLog; ///< empty: nothing is logged
        QString done{};     ///< as in "Collection removed", said beside a way back; empty: nothing is said
    };

    /// A record or an entry of the sidebar has another number from now on.
    struct Renumbering {
        /// Of the edits of which it is known by its old number.
        enum class Scope { EarlierEdits, LaterEdits };

        Scope scope;
        std::optional<FilterType> entryType; ///< none for a record
        qint64 from;
        qint64 to;
    };

    explicit Edit(Texts texts);
    virtual ~Edit() = default;
    Edit(const Edit&) = delete;
    Edit& operator=(const Edit&) = delete;

    const Texts& texts() const { return m_texts; }

    /// The select that reads what redo() needs to know.
    virtual QString stateStatement() const = 0;
    /// Remembers the state for the way back and gives the statements of the edit; none where it would change
    /// nothing.
    virtual QStringList redo(const QList<QStringList>& state) = 0;

    /// The select that reads what undo() needs to know; empty for nothing.
    virtual QString undoStateStatement() const { return {}; }

    /// The statements of the way back to the state of the last redo.
    virtual QStringList undo(const QList<QStringList>& state) = 0;

    /// What the statements made last give other numbers, which other edits are to follow.
    virtual QList<Renumbering> renumberings() const { return {}; }

    virtual void renumber(const Renumbering& renumbering) = 0;

    /// The projects that the last step has changed, or brought back. Asked when no statements are being made.
    virtual QList<qint64> changedProjects() const { return {}; }

    struct Entry {
        FilterType type;
        qint64 id;
    };

    /// The entry of the sidebar that the last step has brought back, if it did. Asked as changedProjects().
    virtual std::optional<Entry> broughtEntry() const { return {}; }

    virtual void logFailure(const Stemhaven::DbException& error) const;

private:
    Texts m_texts;
};
