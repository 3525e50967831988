#include "ui/edits/ProjectEdit.h"

#include <utility>

ProjectEdit::ProjectEdit(Texts texts, QList<qint64> projects)
    : m_texts(std::move(texts)),
      m_projects(std::move(projects)) {}
