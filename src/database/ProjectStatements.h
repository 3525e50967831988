#pragma once

#include "project/ProjectDetails.h"

#include <QString>
#include <QStringList>

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

/// A row for each folder, which ends in "/", in their order: how many records have their bundle in it or
/// below.
QString countBelow(const QStringList& folders);

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

QString selectFormerIdentities(long long projectId);
/// To go before each statement that gives a record another identity: the note in a backup of its bundle may
/// still name the one that it has now. An invalid next is none.
QString rememberIdentity(long long projectId, const SystemUniqueFileID& next);
/// Takes the identity from a record whose number the file system has given to another bundle.
QString giveUpIdentity(long long projectId);
/// Takes the folder from a record where another bundle has the place. The name stays, to know the bundle by.
QString giveUpPlace(long long projectId);

QString selectPossibleDuplicate(long long firstId, long long secondId);
QString insertPossibleDuplicate(long long firstId, long long secondId);

} // namespace ProjectStatements

} // namespace Stemhaven
