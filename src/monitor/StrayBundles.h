#pragma once

#include "monitor/RecordedBundles.h"
#include "monitor/WatchedFolders.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// Recorded projects that lie below no root: where they are, and where they are now if a folder above them
/// was renamed while nobody watched.
struct StrayBundles {
    struct Moved {
        QString from;
        QString to;
    };

    /// Those that are at their recorded paths.
    QStringList inPlace;
    QList<Moved> moved;
    QSet<QString> missing;

    /// Looks at the disk, so not on the GUI thread.
    static StrayBundles find(const RecordedBundles::ByPath& recorded, const WatchedFolders& folders);
};

} // namespace Stemhaven
