#pragma once

#include "monitor/WatchedFolders.h"
#include "platform/FileEventStream.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Stemhaven {

/// What a batch of file events comes to.
struct EventBatch {
    struct Move {
        QString path;
        unsigned long long eventID;
        unsigned long long fileID;
    };

    QStringList renamedRoots;
    /// Of bundles, and of folders above projects.
    QList<Move> moves;
    /// Each once, in the order of their first events.
    QStringList changedBundles;
    bool needsSearch = false;
    unsigned long long lastEventID = 0;
};

/// Reduces events to what matters to the catalogue. isPendingMove says whether a file id is that of a move
/// whose first half has been seen in an earlier batch.
EventBatch filterEvents(
    const QList<FileEvent>& events, const WatchedFolders& folders,
    const std::function<bool(unsigned long long fileID)>& isPendingMove);

} // namespace Stemhaven
