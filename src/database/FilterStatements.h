#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Statements over the entries of the sidebar, which are the rows of the look-up tables. Names are given as
/// they are. type is one that has a table.
namespace Stemhaven::FilterStatements {

/// Name and id of every entry that has a name, in the order of the sidebar.
QString selectEntries(FilterType type);
/// Name and id of every status of a kind, the default one first.
QString selectStatuses(FilterType type);
/// The names alone, in no order.
QString selectNames(FilterType type);

/// The columns of a new entry but for its id, as SQL literals.
QStringList newEntryLiterals(FilterType type, const QString& name);
/// One row with the id that a new entry gets: the wished one if no entry has it, else the next free one. -1
/// wishes for none.
QString selectFreeId(FilterType type, qint64 wishedId);
/// An entry from the literals of its other columns.
QString insertLiterals(FilterType type, qint64 id, const QStringList& literals);

QString selectName(FilterType type, qint64 id);
QString rename(FilterType type, qint64 id, const QString& name);

/// The names of the projects that use an entry. Empty for saved searches, which no project uses.
QString selectProjectNames(FilterType type, qint64 id);

/// The entry alone; the projects still refer to it.
QString remove(FilterType type, qint64 id);
/// What refers to an entry: mappings go, genres are unset, statuses fall back to the default. Empty for saved
/// searches.
QString removeReferences(FilterType type, qint64 id);

/// What a removal takes away: a row with an empty text and the entry's columns as literals, but for its id,
/// then a row for each project that uses it, beginning with the project's id. No rows without the entry.
QString selectForRemoval(FilterType type, qint64 id);
/// Lets projects use the entry again.
QString restoreReferences(FilterType type, qint64 id, const QList<qint64>& projectIds);

/// The select, which ends with a condition, without rows unless there is such an entry.
QString whereExists(const QString& select, FilterType type, qint64 id);

} // namespace Stemhaven::FilterStatements
