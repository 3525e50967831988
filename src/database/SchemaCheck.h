#pragma once

#include <QString>

class QSqlDatabase;

namespace Stemhaven {

/// What a database file holds that this program never writes, in a few words for the user; empty where there
/// is no such thing. A stranger's file could have a statement run for ever by it, or have a few bytes read as
/// gigabytes. Reads the whole file only where it is large. On any thread that the connection may be used on.
QString foreignPartOf(const QSqlDatabase& database);

} // namespace Stemhaven
