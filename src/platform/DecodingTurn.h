#pragma once

#include <chrono>
#include <functional>
#include <mutex>

namespace Stemhaven {

/// Held while something from a bundle is decoded: a list or a picture can take more than a hundred MiB, and
/// only one of them is to be in memory at a time, however many threads read bundles. Only what has been read
/// is decoded: no file, which may not answer, is waited for meanwhile. Never on the GUI thread, as a turn can
/// take most of a second.
class DecodingTurn {
public:
    /// Waits for the turn, which is held until this is destroyed. isWanted is asked again and again while
    /// waiting; once it says no there is no turn.
    explicit DecodingTurn(const std::function<bool()>& isWanted = [] { return true; });
    /// Gives the memory back where the turn was long enough to have taken much.
    ~DecodingTurn();
    DecodingTurn(const DecodingTurn&) = delete;
    DecodingTurn& operator=(const DecodingTurn&) = delete;

    bool isHeld() const { return m_lock.owns_lock(); }

private:
    std::unique_lock<std::timed_mutex> m_lock;
    std::chrono::steady_clock::time_point m_begin;
};

} // namespace Stemhaven
