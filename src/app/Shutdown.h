#pragma once

#include <functional>

namespace Stemhaven {

/// The end of the program, as the threads see it.
///
/// Once it has begun no call reaches the GUI thread any more, so whoever waits for such a call must look here
/// too. All functions may be called from any thread.
class Shutdown {
public:
    /// When this returns no call is queued by post() and none will be: those that wait are destroyed unrun.
    /// On the GUI thread.
    static void begin();
    static bool hasBegun() noexcept;

    /// Queues call on the application object, to run on the GUI thread. Returns false, with call dropped,
    /// when the shut-down has begun or there is no application object. A call is destroyed on the GUI thread,
    /// right after it has been run or when the shut-down begins.
    static bool post(std::function<void()> call);
};

/// Begins the shut-down when its scope ends: stands in main right after the application object, to end before
/// it.
class ShutdownGuard {
public:
    ShutdownGuard() = default;

    ~ShutdownGuard() { Shutdown::begin(); }

    ShutdownGuard(const ShutdownGuard&) = delete;
    ShutdownGuard& operator=(const ShutdownGuard&) = delete;
};

} // namespace Stemhaven
