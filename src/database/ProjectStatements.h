#pragma once

#include "project/ProjectDetails.h"

#include <QString>

class QDateTime;

namespace Stemhaven {

class ProjectData;

/// Statements over the records of projects. Texts are given as they are; times are seconds since the epoch,
/// UTC.
namespace ProjectStatements {

QString selectPaths();
QString selectModificationTimes();
QString selectBySufid(const QString& sufid);
/// As selectBySufid, for the identity that a note names.
QString selectByNotedSufid(const QString& sufid);
QString selectByPath(const QString& filepath, const QString& filename);
/// By the identity, the name and the time of the information file together.
QString selectByTraits(const QString& sufid, const QString& filename, const QDateTime& lastModified);

/// Both read data and throw IOException where it lacks what a record needs.
QString insert(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated);
QString
update(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated, long long projectId);

/// Records whose folder path contains path: more than those below it, as "_" and "%" in it stand for other
/// text too.
QString selectByFolder(const QString& path);
QString selectByPlace(const ProjectDetails& details);
QString selectSufid(long long projectId);
/// Moves a record to where the bundle is now.
QString move(const ProjectDetails& details, long long projectId);

/// Takes the identity from a record whose number the file system has given to another bundle.
QString giveUpIdentity(long long projectId);

QString selectPossibleDuplicate(long long firstId, long long secondId);
QString insertPossibleDuplicate(long long firstId, long long secondId);

} // namespace ProjectStatements

} // namespace Stemhaven
