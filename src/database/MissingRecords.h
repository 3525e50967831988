#pragma once

#include <QSet>
#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// The records of bundles that are not there: those at one of the paths, and those that have given their
/// folder up. On the worker; throws DbException.
QSet<qint64> readMissingRecords(QSqlDatabase& database, const QSet<QString>& missingPaths);

} // namespace Stemhaven
