#pragma once

#include "database/FilterType.h"

#include <QString>

/// Statements over the entries of the sidebar, which are the rows of the look-up tables. Names are given as
/// they are. type is one that has a table.
namespace Stemhaven::FilterStatements {

/// Name and id of every entry that has a name, in the order of the sidebar.
QString selectEntries(FilterType type);
/// The names alone, in no order.
QString selectNames(FilterType type);

QString insert(FilterType type, const QString& name);
QString rename(FilterType type, qint64 id, const QString& name);

/// The names of the projects that use an entry. Empty for saved searches, which no project uses.
QString selectProjectNames(FilterType type, qint64 id);

/// The entry alone; the projects still refer to it.
QString remove(FilterType type, qint64 id);
/// What refers to an entry: mappings go, genres are unset, statuses fall back to the default. Empty for saved
/// searches.
QString removeReferences(FilterType type, qint64 id);

} // namespace Stemhaven::FilterStatements
