#pragma once

#include "project/SystemUniqueFileID.h"

#include <QHash>
#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// What is on record of the bundle at a path.
struct RecordedBundle {
    /// Invalid where the record has given its identity up.
    SystemUniqueFileID sufid;
    /// When the information file was last changed, in seconds since the epoch, UTC; 0 where that is unknown.
    qint64 lastModified = 0;
    /// When the bundle was read, in nanoseconds since the epoch. From the database it is that second's begin.
    qint64 readAt = 0;
};

/// By the path of each record's bundle. On the worker; throws DbException.
QHash<QString, RecordedBundle> readRecordedBundles(QSqlDatabase& database);

} // namespace Stemhaven
