#include "ui/edits/ProjectEdit.h"

#include <algorithm>
#include <utility>

ProjectEdit::ProjectEdit(Texts texts, QList<qint64> projects)
    : Edit(std::move(texts)),
      m_projects(std::move(projects)) {}

void ProjectEdit::renumber(const Renumbering& renumbering) {
    if (renumbering.entryType)
        renumberEntry(*renumbering.entryType, renumbering.from, renumbering.to);
    else
        std::replace(m_projects.begin(), m_projects.end(), renumbering.from, renumbering.to);
}
