#pragma once

#include "project/RecoverableProject.h"

#include <QList>
#include <QStringList>

#include <functional>

namespace Stemhaven {

/// The search for bundles that can be repaired, in all folders below some. Writes nothing. Takes as long as
/// reading all these folders, so it belongs on a thread of its own, on which it also calls its functions; a
/// file system that does not answer is given up.
struct RecoverySearch {
    struct Progress {
        int bundlesLookedAt = 0;
        int projectsFound = 0;
    };

    struct Result {
        QList<RecoverableProject> projects;
        Progress progress;
        /// Folders and bundles that could not be looked at; the log says why.
        QStringList unreadable;
        bool isStopped = false;
    };

    /// Called a few times a second, and at the end. May be empty.
    std::function<void(Progress progress)> progressed;
    /// Asked at every entry of a folder. The search ends when the answer is true. May be empty.
    std::function<bool()> isStopped;

    Result find(const QStringList& folders) const;
};

/// The whole search, where nobody looks on.
QList<RecoverableProject> findRecoverableProjects(const QStringList& folders);

} // namespace Stemhaven
