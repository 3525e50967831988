#pragma once

#include "monitor/RecordedBundles.h"
#include "monitor/StrayBundles.h"
#include "monitor/WatchedFolders.h"

#include <functional>
#include <memory>

namespace Stemhaven {

class TaskManager;

/// Reads the root folders from the database and finds the folders above the recorded projects that lie below
/// none of them. Then done is called on the GUI thread, or failed where the database fails, which is logged.
void queryWatchedFolders(
    TaskManager& tasks, const std::shared_ptr<const RecordedBundles>& recorded,
    const std::function<void(const WatchedFolders& folders, const StrayBundles& strays)>& done,
    const std::function<void()>& failed);

} // namespace Stemhaven
