#pragma once

#include "database/ReleaseStatements.h"
#include "ui/edits/ProjectEdit.h"

/// Gives a project other release details, all in one step.
class ReleaseEdit : public ProjectEdit {
public:
    ReleaseEdit(Texts texts, qint64 project, Stemhaven::ReleaseDetails details);

    QString stateStatement() const override;
    /// Throws Exception where there is no such record any more.
    QStringList redo(const QList<QStringList>& state) override;
    QStringList undo(const QList<QStringList>& state) override;

    QList<qint64> changedProjects() const override { return projects(); }

protected:
    void renumberEntry(FilterType /*type*/, qint64 /*from*/, qint64 /*to*/) override {}

private:
    const Stemhaven::ReleaseDetails m_details;
    QStringList m_before; ///< literals
};
