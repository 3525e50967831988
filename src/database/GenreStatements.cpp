#include "database/GenreStatements.h"

#include "database/SqlText.h"

namespace Stemhaven::GenreStatements {

QString selectByName(const QString& name) {
    return QStringLiteral("SELECT genre_id FROM genres WHERE name='%1'").arg(escape(name));
}

QString selectIdAndNameByName(const QString& name) {
    return QStringLiteral("SELECT genre_id, name FROM genres WHERE name='%1'").arg(escape(name));
}

QString insertForNewProject(const QString& name) {
    return QStringLiteral("INSERT INTO genres VALUES(NULL, '%1', NULL)").arg(escape(name));
}

QString insertForAllProjects(const QString& name) {
    return QStringLiteral("INSERT INTO genres VALUES (NULL, '%1', NULL)").arg(escape(name));
}

QString assignToProject(long long genreId, long long projectId) {
    return QStringLiteral("UPDATE projects SET genre_id='%1' WHERE project_id='%2'")
        .arg(QString::number(genreId), QString::number(projectId));
}

QString assignToFolders(long long genreId, const QString& name) {
    // A stored folder path ends in "/", and so must what it is compared with.
    return QStringLiteral("UPDATE projects SET genre_id='%1' WHERE genre_id IS NULL AND filepath LIKE '%/%2'")
        .arg(QString::number(genreId), escape(name) + QLatin1Char('/'));
}

QString selectFolders() {
    return QStringLiteral("SELECT DISTINCT(filepath) FROM projects");
}

} // namespace Stemhaven::GenreStatements
