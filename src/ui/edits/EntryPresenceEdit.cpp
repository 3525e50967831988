#include "ui/edits/EntryPresenceEdit.h"

#include "app/errors/DbException.h"
#include "database/FilterStatements.h"

#include <QDebug>

#include <utility>

namespace FilterStatements = Stemhaven::FilterStatements;

std::unique_ptr<EntryPresenceEdit>
EntryPresenceEdit::addition(Texts texts, FilterType type, const QString& name) {
    std::unique_ptr<EntryPresenceEdit> edit(
        new EntryPresenceEdit(std::move(texts), Kind::Addition, type, -1));
    edit->m_literals = FilterStatements::newEntryLiterals(type, name);
    return edit;
}

std::unique_ptr<EntryPresenceEdit>
EntryPresenceEdit::removal(Texts texts, FilterType type, qint64 id, const QString& referencesFailureLog) {
    std::unique_ptr<EntryPresenceEdit> edit(new EntryPresenceEdit(std::move(texts), Kind::Removal, type, id));
    edit->m_referencesFailureLog = referencesFailureLog;
    return edit;
}

EntryPresenceEdit::EntryPresenceEdit(Texts texts, Kind kind, FilterType type, qint64 id)
    : Edit(std::move(texts)),
      m_kind(kind),
      m_type(type),
      m_id(id),
      m_idBefore(id) {}

QString EntryPresenceEdit::stateStatement() const {
    return m_kind == Kind::Addition ? FilterStatements::selectFreeId(m_type, m_id)
                                    : FilterStatements::selectForRemoval(m_type, m_id);
}

QString EntryPresenceEdit::undoStateStatement() const {
    return m_kind == Kind::Addition ? FilterStatements::selectForRemoval(m_type, m_id)
                                    : FilterStatements::selectFreeId(m_type, m_id);
}

QStringList EntryPresenceEdit::redo(const QList<QStringList>& state) {
    return m_kind == Kind::Addition ? bringBack(state) : takeAway(state);
}

QStringList EntryPresenceEdit::undo(const QList<QStringList>& state) {
    return m_kind == Kind::Addition ? takeAway(state) : bringBack(state);
}

QStringList EntryPresenceEdit::takeAway(const QList<QStringList>& state) {
    m_idBefore = m_id;
    m_isThere = false;
    if (state.isEmpty() || !state.constFirst().constFirst().isEmpty())
        return {};
    m_literals = state.constFirst().sliced(1);
    m_projects.clear();
    for (const QStringList& row : state.sliced(1))
        m_projects.append(row.constFirst().toLongLong());
    QStringList statements{FilterStatements::remove(m_type, m_id)};
    const QString references = FilterStatements::removeReferences(m_type, m_id);
    if (!references.isEmpty())
        statements.append(references);
    return statements;
}

QStringList EntryPresenceEdit::bringBack(const QList<QStringList>& state) {
    m_idBefore = m_id;
    m_isThere = true;
    m_id = state.value(0).value(0).toLongLong();
    QStringList statements{FilterStatements::insertLiterals(m_type, m_id, m_literals)};
    if (!m_projects.isEmpty())
        statements.append(FilterStatements::restoreReferences(m_type, m_id, m_projects));
    return statements;
}

QList<Edit::Renumbering> EntryPresenceEdit::renumberings() const {
    if (m_idBefore < 0 || m_id == m_idBefore)
        return {};
    // The edits of a time when there was the entry.
    const auto scope =
        m_kind == Kind::Addition ? Renumbering::Scope::LaterEdits : Renumbering::Scope::EarlierEdits;
    return {{scope, m_type, m_idBefore, m_id}};
}

std::optional<Edit::Entry> EntryPresenceEdit::broughtEntry() const {
    return m_isThere ? std::optional(Entry{m_type, m_id}) : std::nullopt;
}

void EntryPresenceEdit::renumber(const Renumbering& renumbering) {
    if (renumbering.entryType == m_type && renumbering.from == m_id)
        m_id = renumbering.to;
}

void EntryPresenceEdit::logFailure(const Stemhaven::DbException& error) const {
    if (m_kind == Kind::Addition) {
        Edit::logFailure(error);
        return;
    }
    const bool isOfReferences = error.getExecutedQuery() == FilterStatements::removeReferences(m_type, m_id);
    qCritical().noquote() << (isOfReferences ? m_referencesFailureLog : texts().failureLog);
    qCritical() << "Reason: " << error;
}
