#include "ui/edits/ColumnEdit.h"

#include "database/UserDataStatements.h"

#include <utility>

namespace UserDataStatements = Stemhaven::UserDataStatements;

ColumnEdit::ColumnEdit(Texts texts, QList<qint64> projects, Change change)
    : ProjectEdit(std::move(texts), std::move(projects)),
      m_change(std::move(change)) {}

QString ColumnEdit::stateStatement() const {
    return UserDataStatements::selectLiterals(m_change.columns, projects());
}

QStringList ColumnEdit::redo(const QList<QStringList>& state) {
    QStringList statements;
    m_before.clear();
    for (const QStringList& row : state) {
        const Before before{row.value(0).toLongLong(), row.sliced(1)};
        if (before.literals == m_change.literals)
            continue;
        m_before.append(before);
        statements.append(m_change.statement(before.project));
    }
    return statements;
}

QStringList ColumnEdit::undo() const {
    QStringList statements;
    for (const Before& before : m_before)
        statements.append(UserDataStatements::setLiterals(m_change.columns, before.literals, before.project));
    return statements;
}

bool ColumnEdit::forgetEntry(FilterType type, qint64 id) {
    if (!m_change.reference || m_change.reference->type != type)
        return true;
    const QString literal = QString::number(id);
    for (Before& before : m_before) {
        if (before.literals.constFirst() == literal)
            before.literals.front() = m_change.reference->valueOfNone;
    }
    return m_change.literals.constFirst() != literal;
}
