#pragma once

#include <QString>

/// Statements for the root-paths database. Paths are given as they are.
namespace Stemhaven::RootPathStatements {

QString selectAll();
QString select(const QString& path);
QString insert(const QString& path);
QString remove(const QString& path);

} // namespace Stemhaven::RootPathStatements
