#pragma once

#include <QHash>
#include <QSet>
#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// The path of every record's bundle. On the worker; throws DbException.
QSet<QString> readProjectPaths(QSqlDatabase& database);

/// For each of these paths that has a record, when the information file was last changed as the record says:
/// seconds since the epoch, UTC. On the worker; throws DbException.
QHash<QString, qint64> readModificationTimes(QSqlDatabase& database, const QSet<QString>& paths);

} // namespace Stemhaven
