#pragma once

#include "database/FilterType.h"

#include <QList>

#include <memory>

class ProjectEdit;
class QDate;

namespace Stemhaven {
struct ReleaseDetails;
}

/// The edits of user data that the window offers, each over one or several projects.
namespace ProjectEdits {

std::unique_ptr<ProjectEdit> starRating(const QList<qint64>& projects, int stars);
/// Takes the rating away where it is that one already.
std::unique_ptr<ProjectEdit> toggledStarRating(qint64 project, int stars);
/// percent is from 0 to 100.
std::unique_ptr<ProjectEdit> progress(const QList<qint64>& projects, int percent, bool completed);
/// type is one of the four kinds of status.
std::unique_ptr<ProjectEdit> status(const QList<qint64>& projects, FilterType type, qint64 statusId);
std::unique_ptr<ProjectEdit> ignored(const QList<qint64>& projects, bool ignored);
/// type is collections, genres or tags.
std::unique_ptr<ProjectEdit> association(const QList<qint64>& projects, FilterType type, qint64 filterId);
std::unique_ptr<ProjectEdit> disassociation(const QList<qint64>& projects, FilterType type, qint64 filterId);
/// Of a project that has a record.
std::unique_ptr<ProjectEdit> release(qint64 project, const Stemhaven::ReleaseDetails& details);
/// Of one that is publicly released.
std::unique_ptr<ProjectEdit> releaseDate(qint64 project, QDate day);
std::unique_ptr<ProjectEdit> deletion(const QList<qint64>& projects);

} // namespace ProjectEdits
