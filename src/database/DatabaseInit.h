#pragma once

#include <functional>

namespace Stemhaven {

class TaskManager;

/// Makes the databases of the manager, or brings them to the current schema, as a chain of tasks. Returns at
/// once.
///
/// onSuccess is called on the GUI thread at the end of the chain, onFailure wherever the chain stops before
/// it. What the user must know is reported through the error handler.
void initDatabase(TaskManager& tasks, std::function<void()> onSuccess, std::function<void()> onFailure);

} // namespace Stemhaven
