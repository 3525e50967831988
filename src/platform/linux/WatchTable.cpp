#include "platform/linux/WatchTable.h"

#include "platform/posix/PathText.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

WatchTable::Entry WatchTable::find(int descriptor) {
    const auto found = m_byDescriptor.find(descriptor);
    if (found == m_byDescriptor.end())
        return {};
    return {&found->second->first, &found->second->second};
}

WatchTable::Entry WatchTable::find(const std::string& path) {
    const auto found = m_byPath.find(path);
    if (found == m_byPath.end())
        return {};
    return {&found->first, &found->second};
}

void WatchTable::put(const std::string& path, const Watch& watch) {
    m_released.erase(watch.descriptor);
    m_byDescriptor[watch.descriptor] = m_byPath.insert_or_assign(path, watch).first;
}

void WatchTable::move(const std::string& from, const std::string& to) {
    for (const auto& it : atOrBelow(from)) {
        auto node = m_byPath.extract(it);
        node.key() = to + node.key().substr(from.size());
        const auto inserted = m_byPath.insert(std::move(node)).position;
        m_byDescriptor[inserted->second.descriptor] = inserted;
    }
    m_detached.erase(from);
}

void WatchTable::detach(const std::string& path, const std::string& seenAt) {
    if (atOrBelow(path).empty())
        return;
    if (const auto entry = find(path))
        noteFormer(path, {entry.watch->fileID, entry.watch->descriptor});
    const std::string name = detachedMark + std::to_string(++m_detachments);
    move(path, name);
    m_detached[name] = {seenAt, Clock::now()};
}

std::string WatchTable::seenAt(const std::string& path) const {
    const std::string top = path.substr(0, path.find('/'));
    const auto found = m_detached.find(top);
    return found == m_detached.end() ? path : found->second.seenAt + path.substr(top.size());
}

std::vector<int> WatchTable::takeGone(Clock::duration patience) {
    std::vector<int> gone;
    const auto latest = Clock::now() - patience;
    for (auto it = m_detached.begin(); it != m_detached.end();) {
        if (it->second.since > latest) {
            ++it;
            continue;
        }
        const auto descriptors = release(it->first);
        gone.insert(gone.end(), descriptors.begin(), descriptors.end());
        it = m_detached.erase(it);
    }
    return gone;
}

std::optional<WatchTable::Clock::time_point> WatchTable::oldestDetached() const {
    std::optional<Clock::time_point> oldest;
    for (const auto& [name, detached] : m_detached)
        oldest = oldest ? std::min(*oldest, detached.since) : detached.since;
    return oldest;
}

std::vector<std::string> WatchTable::takeTouched(const std::string& path) {
    std::vector<std::string> touched;
    for (const auto& it : atOrBelow(path)) {
        if (std::exchange(it->second.isTouched, false))
            touched.push_back(it->first);
    }
    return touched;
}

std::vector<std::string> WatchTable::missedBy(unsigned look, const std::string& path) {
    std::vector<std::string> missed;
    for (const auto& it : atOrBelow(path)) {
        // A root may lie in a hidden folder of another one.
        const bool isSeen = it->second.look == look || it->first.find("/.", path.size()) != std::string::npos;
        if (!isSeen && (missed.empty() || !isAtOrBelow(it->first, missed.back())))
            missed.push_back(it->first);
    }
    return missed;
}

std::vector<int> WatchTable::release(const std::string& path) {
    std::vector<int> descriptors;
    for (const auto& it : atOrBelow(path))
        descriptors.push_back(takeOut(it));
    return descriptors;
}

std::optional<int> WatchTable::releaseOne(const std::string& path) {
    const auto found = m_byPath.find(path);
    if (found == m_byPath.end())
        return std::nullopt;
    return takeOut(found);
}

int WatchTable::takeOut(ByPath::iterator it) {
    const int descriptor = it->second.descriptor;
    m_byDescriptor.erase(descriptor);
    m_released.insert(descriptor);
    m_byPath.erase(it);
    return descriptor;
}

void WatchTable::forget(int descriptor) {
    m_released.erase(descriptor);
    const auto found = m_byDescriptor.find(descriptor);
    if (found == m_byDescriptor.end())
        return;
    noteFormer(found->second->first, {found->second->second.fileID, descriptor});
    m_byPath.erase(found->second);
    m_byDescriptor.erase(found);
}

std::uint64_t WatchTable::fileIDOf(const std::string& path) {
    const auto entry = find(path);
    return entry ? entry.watch->fileID : 0;
}

void WatchTable::noteFormer(const std::string& path, const Former& former) {
    const auto above = find(std::string(parentOf(path)));
    if (above && former.fileID != 0)
        m_former[{above.watch->descriptor, std::string(nameOf(path))}] = former;
}

std::optional<WatchTable::Former> WatchTable::takeFormer(const std::string& path) {
    const auto above = find(std::string(parentOf(path)));
    if (!above)
        return std::nullopt;
    const auto node = m_former.extract({above.watch->descriptor, std::string(nameOf(path))});
    return node.empty() ? std::nullopt : std::optional(node.mapped());
}

void WatchTable::clear() {
    m_byDescriptor.clear();
    m_byPath.clear();
    m_released.clear();
    m_former.clear();
    m_detached.clear();
}

std::vector<WatchTable::ByPath::iterator> WatchTable::atOrBelow(const std::string& path) {
    std::vector<ByPath::iterator> found;
    const auto top = m_byPath.find(path);
    if (top != m_byPath.end())
        found.push_back(top);
    const std::string below = entryOf(path, "");
    for (auto it = m_byPath.lower_bound(below); it != m_byPath.end() && it->first.starts_with(below); ++it)
        found.push_back(it);
    return found;
}

} // namespace Stemhaven
