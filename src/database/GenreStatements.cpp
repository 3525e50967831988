#include "database/GenreStatements.h"

#include "database/SqlText.h"

#include <QStringList>

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

QString assignToFolder(long long genreId, const QString& name, const QList<qint64>& projectIds) {
    QStringList ids;
    ids.reserve(projectIds.size());
    for (const qint64 id : projectIds)
        ids.append(QString::number(id));
    // A stored folder path ends in "/". LIKE would take letters of either case, and "_" and "%" for any.
    return QStringLiteral(
               "UPDATE projects SET genre_id='%1' WHERE genre_id IS NULL AND project_id IN (%3) AND "
               "substr(filepath, -length('/%2/'))='/%2/'")
        .arg(QString::number(genreId), escape(name), ids.join(QLatin1Char(',')));
}

QString selectFolders(qint64 afterProjectId, int count) {
    return QStringLiteral("SELECT project_id, filepath, genre_id IS NULL FROM projects WHERE project_id>%1 "
                          "ORDER BY project_id LIMIT %2")
        .arg(QString::number(afterProjectId), QString::number(count));
}

} // namespace Stemhaven::GenreStatements
