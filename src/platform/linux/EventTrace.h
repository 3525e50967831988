#pragma once

#include "platform/linux/InotifyDescriptor.h"

#include <QString>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Stemhaven {

/// The last thousand steps from the system's events to ours. They are put into words only when something is
/// wrong, or for the log of the category "stemhaven.events" where that shows debug messages. For one thread.
class EventTrace {
public:
    static constexpr std::size_t capacity = 1000;

    /// The folder is what the watch is on; empty for a watch that is not known.
    void noteSystemEvent(const RawEvent& event, const std::string& folder);
    /// Whatever the system's events became.
    void
    noteFileEvent(const std::string& path, std::uint64_t fileID, std::uint32_t flags, std::uint64_t eventID);

    /// Writes all steps into the log, oldest first, and forgets them. As information, which is logged at
    /// every level.
    void write(const QString& reason);

private:
    using Clock = std::chrono::steady_clock;

    struct Step {
        Clock::time_point time;
        bool isFromSystem = false;
        /// Of the system's events; what is in the name is relative to the path.
        RawEvent event = {};
        std::string path = {};
        /// Of ours.
        std::uint64_t fileID = 0;
        std::uint32_t flags = 0;
        std::uint64_t eventID = 0;
    };

    Step& next();
    void logLive(const Step& step) const;
    static QString described(const Step& step);

    /// Full from the beginning of the first thousand on; reused from the oldest then.
    std::vector<Step> m_steps;
    std::size_t m_oldest = 0;
};

} // namespace Stemhaven
