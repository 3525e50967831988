#include "database/RootPathStatements.h"

#include "database/SqlText.h"

namespace Stemhaven::RootPathStatements {

QString selectAll() {
    return QStringLiteral("SELECT * FROM root_project_search_paths;");
}

QString select(const QString& path) {
    return QStringLiteral("SELECT * FROM root_project_search_paths WHERE root_search_path='%1'")
        .arg(escape(path));
}

QString insert(const QString& path) {
    return QStringLiteral("INSERT INTO root_project_search_paths VALUES ('%1')").arg(escape(path));
}

QString remove(const QString& path) {
    return QStringLiteral("DELETE FROM root_project_search_paths WHERE root_search_path='%1'")
        .arg(escape(path));
}

} // namespace Stemhaven::RootPathStatements
