#include "platform/linux/WatchTable.h"

#include "platform/linux/PathText.h"

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
        if (node.mapped().fileID != 0)
            m_formerIDs[node.key()] = node.mapped().fileID;
        node.key() = to + node.key().substr(from.size());
        const auto inserted = m_byPath.insert(std::move(node)).position;
        m_byDescriptor[inserted->second.descriptor] = inserted;
    }
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
    if (found->second->second.fileID != 0)
        m_formerIDs[found->second->first] = found->second->second.fileID;
    m_byPath.erase(found->second);
    m_byDescriptor.erase(found);
}

std::uint64_t WatchTable::fileIDOf(const std::string& path) {
    const auto entry = find(path);
    if (entry)
        return entry.watch->fileID;
    const auto former = m_formerIDs.find(path);
    return former == m_formerIDs.end() ? 0 : former->second;
}

void WatchTable::clear() {
    m_byDescriptor.clear();
    m_byPath.clear();
    m_released.clear();
    m_formerIDs.clear();
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
