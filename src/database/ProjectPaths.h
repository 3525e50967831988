#pragma once

#include <QSet>
#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// The path of every record's bundle. On the worker; throws DbException.
QSet<QString> readProjectPaths(QSqlDatabase& database);

} // namespace Stemhaven
