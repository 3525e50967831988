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

/// What is known of paths and moves from before a batch.
struct EventContext {
    WatchedFolders folders;
    std::function<bool(const QString& bundlePath)> isRecorded;
    /// Whether the file id is that of a move whose first half has been seen in an earlier batch.
    std::function<bool(unsigned long long fileID)> isPendingMove;
};

/// Reduces events to what matters to the catalogue. What lies below no root matters only if it is a folder
/// above a recorded project, is such a project, or comes from there. Looks at the disk.
EventBatch filterEvents(const QList<FileEvent>& events, const EventContext& context);

} // namespace Stemhaven
