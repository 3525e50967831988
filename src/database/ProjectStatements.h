#pragma once

#include "project/ProjectDetails.h"

#include <QString>

namespace Stemhaven {

class ProjectData;

/// Statements over the records of projects. Texts are given as they are; times are seconds since the epoch,
/// UTC.
namespace ProjectStatements {

/// Where each record's bundle is, its identity, and the times of its last save and of its reading.
QString selectRecordedBundles();
QString selectBySufid(const QString& sufid);
QString selectById(long long projectId);
QString selectByPath(const QString& filepath, const QString& filename);

/// To be prepared and bound to the folder and the name of the bundle.
QString selectIdByPath();
/// The ids of the records that have given their place up.
QString selectWithoutPlace();

/// Both read data and throw IOException where it lacks what a record needs.
QString insert(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated);
QString
update(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated, long long projectId);

/// Moves a record to where the bundle is now.
QString move(const ProjectDetails& details, long long projectId);

/// Takes the identity from a record whose number the file system has given to another bundle. It is marked
/// and not erased, since the note in a backup of the record's own bundle still names it.
QString giveUpIdentity(long long projectId);
/// The identity that a record has given up, from what its column holds. Empty where it has not.
QString formerSufid(const QString& stored);
/// Takes the folder from a record where another bundle has the place. The name stays, to know the bundle by.
QString giveUpPlace(long long projectId);

QString selectPossibleDuplicate(long long firstId, long long secondId);
QString insertPossibleDuplicate(long long firstId, long long secondId);

} // namespace ProjectStatements

} // namespace Stemhaven
