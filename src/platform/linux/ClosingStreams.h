#pragma once

#include <atomic>

namespace Stemhaven {

/// Counts the streams that were told to stop and have not yet done so. Safe from any thread.
class ClosingStreams {
public:
    /// Stands for one of them as long as it lives.
    class Hold {
    public:
        Hold() { ++count(); }

        ~Hold() { --count(); }

        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
    };

    static bool any() { return count() > 0; }

private:
    static std::atomic<int>& count() {
        static std::atomic<int> streams = 0;
        return streams;
    }
};

} // namespace Stemhaven
