#pragma once

#include "database/Task.h"

namespace Stemhaven {

/// Runs a function on the worker.
class SimpleTask : public Task {
public:
    explicit SimpleTask(std::function<void()> function);
    unsigned short exec() override;

private:
    std::function<void()> m_function;
};

} // namespace Stemhaven
