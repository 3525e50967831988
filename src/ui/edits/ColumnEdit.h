#pragma once

#include "ui/edits/ProjectEdit.h"

#include <functional>
#include <optional>

/// Gives columns of the records new values: stars, progress, a status, the genre, ignored.
class ColumnEdit : public ProjectEdit {
public:
    /// The entry of the sidebar that the column's value is the id of.
    struct Reference {
        FilterType type;
        QString valueOfNone; ///< as a literal, for a record whose entry is gone
    };

    struct Change {
        QStringList columns;
        QStringList literals; ///< the new values, a column each
        std::function<QString(qint64 project)> statement;
        std::optional<Reference> reference;
    };

    ColumnEdit(Texts texts, QList<qint64> projects, Change change);

    QString stateStatement() const override;
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo() const override;
    bool forgetEntry(FilterType type, qint64 id) override;

private:
    struct Before {
        qint64 project;
        QStringList literals;
    };

    Change m_change;
    QList<Before> m_before;
};
