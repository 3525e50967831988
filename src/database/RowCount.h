#pragma once

class QSqlQuery;

namespace Stemhaven {

/// The number of rows of an executed select. Leaves the query before its first row. Fetches every row, so it
/// belongs on the thread of the connection; afterwards the rows can be read without touching the connection.
int rowCount(QSqlQuery* query);

} // namespace Stemhaven
