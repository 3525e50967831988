#pragma once

#include "monitor/WatchedFolders.h"

#include <QSet>
#include <QString>

#include <functional>

namespace Stemhaven {

class TaskManager;

/// Reads the root folders from the database and finds the folders above those of the known bundles that lie
/// below none of them. done is called on the GUI thread, unless the database fails, which is logged.
void queryWatchedFolders(
    TaskManager& tasks, const QSet<QString>& knownBundles,
    const std::function<void(const WatchedFolders&)>& done);

} // namespace Stemhaven
