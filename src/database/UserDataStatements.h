#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Statements over what the user says of projects. Texts are given as they are.
namespace Stemhaven::UserDataStatements {

QString selectProject(qint64 projectId);

/// One row about all of the projects: their "count", the "ignored_count", and the least and the greatest
/// value of other columns, such as "min_star_rating" and "max_star_rating", which are equal where all have
/// the same. Of stars, progress and statuses also every value that there is, as in "all_star_rating",
/// separated by commas.
QString selectSummary(const QList<qint64>& projectIds);
/// Rows of the number of a FilterType, the id of a collection, genre or tag, and how many of the projects it
/// has.
QString selectEntryCounts(const QList<qint64>& projectIds);

/// The type is collections, genres or tags; any other gives an empty text.
QString associate(FilterType type, qint64 filterId, qint64 projectId);
QString disassociate(FilterType type, qint64 filterId, qint64 projectId);
/// Gives the project the genre or the status if it has the other one.
QString replaceReference(FilterType type, qint64 fromEntry, qint64 toEntry, qint64 projectId);
/// Those of the projects that are in the collection or have the genre or the tag.
QString selectAssociated(FilterType type, qint64 filterId, const QList<qint64>& projectIds);
/// The others that there are; none where there is no such entry.
QString selectNotAssociated(FilterType type, qint64 filterId, const QList<qint64>& projectIds);

/// One row per project: its id, then the values of the columns as SQL literals, as setLiterals() takes them.
QString selectLiterals(const QStringList& columns, const QList<qint64>& projectIds);
QString setLiterals(const QStringList& columns, const QStringList& literals, qint64 projectId);

/// The record alone; what it is associated with goes with deleteAssociations().
QString deleteProject(qint64 projectId);
QStringList deleteAssociations(qint64 projectId);

/// A row where the user has said nothing of the record yet.
QString selectUntouched(qint64 projectId);
/// Says of a new record all that the user said of another one, its associations included.
QStringList copy(qint64 fromProjectId, qint64 toProjectId);

/// The rows of the records and of their associations. Of a record: "projects", its id, the statement that
/// inserts it again. Of an association: "collections" or "tags", the entry's id, the project's id.
QString selectAsInserts(const QList<qint64>& projectIds);

/// Those of the ids that records have, each with the greatest id of all records.
QString selectTaken(const QList<qint64>& projectIds);
/// Gives the record another id, for which there is none yet.
QStringList moveProject(qint64 from, qint64 to);
/// To be run after a deleted record was inserted again: deletes a record that was made of the same bundle
/// meanwhile, and takes the identity from the restored one if another has it by now.
QStringList settleRestoredProject(qint64 projectId);

} // namespace Stemhaven::UserDataStatements
