#pragma once

#include "ui/edits/ProjectEdit.h"

#include <optional>

/// Gives columns of the records new values: stars, progress, a status, the genre, ignored.
class ColumnEdit : public ProjectEdit {
public:
    struct Change {
        QStringList columns;
        QStringList literals; ///< the new values, a column each
        /// The new values where all projects have the others already; empty: nothing changes then.
        QStringList otherwise{};
        /// Where the value is the id of an entry of the sidebar.
        std::optional<FilterType> entryType{};
    };

    ColumnEdit(Texts texts, QList<qint64> projects, Change change);

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo(const QList<QStringList>& state) override;
    QList<qint64> changedProjects() const override;

protected:
    void renumberEntry(FilterType type, qint64 from, qint64 to) override;

private:
    struct Before {
        qint64 project;
        QStringList literals;
    };

    Change m_change;
    QList<Before> m_before;
};
