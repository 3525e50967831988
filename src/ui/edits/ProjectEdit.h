#pragma once

#include "ui/edits/Edit.h"

/// A change of what the user says of some projects.
class ProjectEdit : public Edit {
public:
    ProjectEdit(Texts texts, QList<qint64> projects);

    const QList<qint64>& projects() const { return m_projects; }

    void renumber(const Renumbering& renumbering) override;

protected:
    /// An entry that the edit, or the state before it, refers to may have another number.
    virtual void renumberEntry(FilterType type, qint64 from, qint64 to) = 0;

private:
    QList<qint64> m_projects;
};
