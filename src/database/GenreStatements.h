#pragma once

#include <QList>
#include <QString>

/// Statements for the assignment of genres. Names are given as they are.
namespace Stemhaven::GenreStatements {

QString selectByName(const QString& name);
QString selectIdAndNameByName(const QString& name);
QString insertForNewProject(const QString& name);
QString insertForAllProjects(const QString& name);
QString assignToProject(long long genreId, long long projectId);
/// To those of the projects that have no genre and whose bundle is directly in a folder of exactly that name.
QString assignToFolder(long long genreId, const QString& name, const QList<qint64>& projectIds);
/// Of up to count projects after the one with that id: the id, the folder and whether a genre is missing, in
/// the order of the ids.
QString selectFolders(qint64 afterProjectId, int count);

} // namespace Stemhaven::GenreStatements
