#pragma once

#include "database/RecordCandidates.h"
#include "project/ProjectData.h"
#include "project/ProjectDetails.h"

#include <QString>

#include <exception>
#include <memory>
#include <optional>

namespace Stemhaven {

/// What is found of a bundle in one look at the disk: all that its record is decided by and made from.
struct FoundBundle {
    /// Reads the bundle; blocks for as long as the disk does, so never on the GUI thread.
    static FoundBundle read(const QString& path);

    bool isThere() const { return details.isValid && details.sufid.valid; }

    ProjectDetails details;
    std::optional<RecordCandidates::Note> note;
    /// Null where the bundle could not be read.
    std::shared_ptr<const ProjectData> data;
    /// Why the note or the data could not be read.
    std::exception_ptr noteFailure;
    std::exception_ptr dataFailure;
    /// When its information file was last changed, in seconds since the epoch; 0 where there is none.
    qint64 savedAt = 0;
    /// When the reading began, in nanoseconds since the epoch.
    qint64 readAt = 0;
};

} // namespace Stemhaven
