#pragma once

#include "platform/linux/BundleNames.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/EventCoalescer.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace Stemhaven {

/// Whether a bundle was changed while nobody watched it. Empty where that is not asked.
using WasMissed = std::function<bool(const std::string& bundle, const BundleStamp& stamp)>;

/// Finds out what changed below a folder by comparing what is there with what was there the last time: for
/// folders whose events the system does not tell.
class RootPoller {
public:
    using Clock = std::chrono::steady_clock;

    /// stop ends a look early.
    RootPoller(
        std::string top, const BundleNames& names, std::chrono::milliseconds interval,
        const std::atomic<bool>& stop);

    /// Learns what is there, and reports what was missed.
    void begin(const WasMissed& wasMissed, EventCoalescer& events);

    /// False when the folder is not there or cannot be read. Nothing is reported then: it may come back.
    bool poll(EventCoalescer& events);

    Clock::time_point next() const { return m_next; }

private:
    struct Bundle {
        std::uint64_t fileID = 0;
        BundleStamp stamp;
    };

    using Bundles = std::map<std::string, Bundle>;

    std::optional<Bundles> look();

    std::string m_top;
    const BundleNames& m_names;
    std::chrono::milliseconds m_interval;
    const std::atomic<bool>& m_stop;
    Clock::time_point m_next;
    Bundles m_bundles;
};

} // namespace Stemhaven
