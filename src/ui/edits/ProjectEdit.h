#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QString>
#include <QStringList>

/// One change of what the user says of some projects, and the way back. It makes the statements; the history
/// has them run. The functions that make statements are called on the database's worker, one at a time, all
/// others on the GUI thread.
class ProjectEdit {
public:
    /// What an edit is called to the user, and what its failure is called.
    struct Texts {
        QString name;         ///< as in "Undo Rating"
        QString failureTitle; ///< of the alert
        QString failureLog;
        QString successLog; ///< empty: nothing is logged
    };

    ProjectEdit(Texts texts, QList<qint64> projects);
    virtual ~ProjectEdit() = default;
    ProjectEdit(const ProjectEdit&) = delete;
    ProjectEdit& operator=(const ProjectEdit&) = delete;

    const Texts& texts() const { return m_texts; }

    const QList<qint64>& projects() const { return m_projects; }

    /// The select that reads what redo() needs to know.
    virtual QString stateStatement() const = 0;
    /// Remembers the state for the way back and gives the statements of the edit; none where it would change
    /// nothing.
    virtual QStringList redo(const QList<QStringList>& state) = 0;
    /// The statements of the way back to the state of the last redo.
    virtual QStringList undo() const = 0;

    /// An entry of the sidebar is gone: no record is to refer to it again. Returns whether the edit still
    /// means anything.
    virtual bool forgetEntry(FilterType type, qint64 id) = 0;

private:
    Texts m_texts;
    QList<qint64> m_projects;
};
