#include "ui/edits/ColumnEdit.h"

#include "database/FilterStatements.h"
#include "database/UserDataStatements.h"

#include <algorithm>
#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;

ColumnEdit::ColumnEdit(Texts texts, QList<qint64> projects, Change change)
    : ProjectEdit(std::move(texts), std::move(projects)),
      m_change(std::move(change)) {}

QString ColumnEdit::stateStatement() const {
    const QString select = UserDataStatements::selectLiterals(m_change.columns, projects());
    // No project is given an entry that was removed meanwhile.
    return m_change.entryType ? Stemhaven::FilterStatements::whereExists(
                                    select, *m_change.entryType, m_change.literals.constFirst().toLongLong())
                              : select;
}

QStringList ColumnEdit::redo(const QList<QStringList>& state) {
    QStringList statements;
    m_before.clear();
    const bool haveAll = std::all_of(state.cbegin(), state.cend(), [&](const QStringList& row) {
        return row.sliced(1) == m_change.literals;
    });
    const QStringList& literals =
        haveAll && !m_change.otherwise.isEmpty() ? m_change.otherwise : m_change.literals;
    for (const QStringList& row : state) {
        const Before before{row.value(0).toLongLong(), row.sliced(1)};
        if (before.literals == literals)
            continue;
        m_before.append(before);
        statements.append(UserDataStatements::setLiterals(m_change.columns, literals, before.project));
    }
    return statements;
}

QStringList ColumnEdit::undo(const QList<QStringList>& /*state*/) {
    QStringList statements;
    for (const Before& before : m_before)
        statements.append(UserDataStatements::setLiterals(m_change.columns, before.literals, before.project));
    return statements;
}

void ColumnEdit::renumberEntry(FilterType type, qint64 from, qint64 to) {
    if (m_change.entryType != type)
        return;
    const auto follow = [oldLiteral = QString::number(from), to](QStringList& literals) {
        if (literals.constFirst() == oldLiteral)
            literals.front() = QString::number(to);
    };
    follow(m_change.literals);
    for (Before& before : m_before)
        follow(before.literals);
}

QList<qint64> ColumnEdit::changedProjects() const {
    QList<qint64> projects;
    for (const Before& before : m_before)
        projects.append(before.project);
    return projects;
}
