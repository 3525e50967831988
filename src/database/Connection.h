#pragma once

class QSqlDatabase;
class QString;

/// Opening of the database connections. On the worker thread only.
namespace Stemhaven {

/// Opens the file at path, with its folder made where it is missing, hardened against what it holds. Does
/// nothing when it is open already. Throws DbException with failureMessage where it does not open.
void openDatabase(QSqlDatabase& database, const QString& path, const QString& failureMessage);

/// What the main connection has beyond that: write-ahead logging, and what the checks of a bundle look up, so
/// that their cost does not grow with the catalogue.
void prepareMainConnection(QSqlDatabase& database);

/// Makes the indexes and the table of former identities, if the table of projects is there.
void ensureLookUpTables(QSqlDatabase& database);

/// Moves what has been written from the log into the database file, so that a power cut finds it there.
void checkpoint(QSqlDatabase& database);

} // namespace Stemhaven
