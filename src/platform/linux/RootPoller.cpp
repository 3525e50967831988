#include "platform/linux/RootPoller.h"

#include "platform/linux/FolderReading.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

RootPoller::RootPoller(
    std::string top, const BundleNames& names, std::chrono::milliseconds interval,
    const std::atomic<bool>& stop)
    : m_top(std::move(top)),
      m_names(names),
      m_interval(interval),
      m_stop(stop),
      m_next(Clock::now() + interval) {}

void RootPoller::begin(const WasMissed& wasMissed, EventCoalescer& events) {
    m_bundles = look().value_or(Bundles{});
    if (!wasMissed)
        return;
    for (const auto& [path, bundle] : m_bundles) {
        if (wasMissed(path, bundle.stamp))
            events.add(path, bundle.fileID, FileEvent::ItemModified);
    }
}

bool RootPoller::poll(EventCoalescer& events) {
    auto found = look();
    if (!found)
        return false;

    std::map<std::uint64_t, std::string> gone;
    for (const auto& [path, bundle] : m_bundles) {
        if (!found->contains(path))
            gone[bundle.fileID] = path;
    }
    for (const auto& [path, bundle] : *found) {
        const auto before = m_bundles.find(path);
        if (before == m_bundles.end()) {
            const auto old = gone.extract(bundle.fileID);
            if (!old.empty())
                events.add(old.mapped(), bundle.fileID, FileEvent::ItemRenamed);
            events.add(
                path, bundle.fileID,
                old.empty() ? FileEvent::ItemCreated : FileEvent::ItemRenamed | FileEvent::ItemModified);
        } else if (before->second.stamp != bundle.stamp || before->second.fileID != bundle.fileID) {
            events.add(path, bundle.fileID, FileEvent::ItemModified);
        }
    }
    for (const auto& [fileID, path] : gone)
        events.add(path, fileID, FileEvent::ItemRemoved);
    m_bundles = std::move(*found);
    return true;
}

std::optional<RootPoller::Bundles> RootPoller::look() {
    // A slow network is not to be kept busy all the time.
    constexpr int restFactor = 20;

    const auto begin = Clock::now();
    Bundles bundles;
    bool isThere = true;
    TreeWalk walk;
    walk.enter = [this](const std::string&) {
        return !m_stop;
    };
    walk.onBundle = [&](const std::string& bundle) {
        if (!m_stop)
            bundles[bundle] = {FolderIdentity::of(bundle).inode, BundleStamp::of(bundle)};
    };
    walk.onUnreadable = [&](const std::string& folder, int) {
        isThere = isThere && folder != m_top;
    };
    if (m_names.isBundle(m_top)) {
        isThere = static_cast<bool>(FolderIdentity::of(m_top));
        if (isThere)
            walk.onBundle(m_top);
    } else {
        walk.walk(m_top, m_names);
    }
    const auto end = Clock::now();
    m_next = end + std::max<Clock::duration>(m_interval, restFactor * (end - begin));
    if (!isThere || m_stop)
        return std::nullopt;
    return bundles;
}

} // namespace Stemhaven
