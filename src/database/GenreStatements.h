#pragma once

#include <QString>

/// Statements for the assignment of genres. Names are given as they are.
namespace Stemhaven::GenreStatements {

QString selectByName(const QString& name);
QString selectIdAndNameByName(const QString& name);
QString insertForNewProject(const QString& name);
QString insertForAllProjects(const QString& name);
QString assignToProject(long long genreId, long long projectId);
/// To every project without a genre whose bundle stands in a folder of that name.
QString assignToFolders(long long genreId, const QString& name);
QString selectFolders();

} // namespace Stemhaven::GenreStatements
