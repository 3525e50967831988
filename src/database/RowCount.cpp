#include "database/RowCount.h"

#include <QSqlQuery>

namespace Stemhaven {

int rowCount(QSqlQuery* query) {
    // SQLite does not know the size of a result before it has been stepped through.
    const int count = query->last() ? query->at() + 1 : 0;
    query->seek(QSql::BeforeFirstRow);
    return count;
}

} // namespace Stemhaven
