#include "monitor/ChecksInProgress.h"

#include <chrono>

namespace Stemhaven {

bool ChecksInProgress::begin(const ProjectDetails& details) {
    const std::lock_guard lock(m_mutex);
    if (m_details.contains(details))
        return false;
    m_details.append(details);
    return true;
}

void ChecksInProgress::finish(const ProjectDetails& details) {
    const std::lock_guard lock(m_mutex);
    m_details.removeOne(details);
    m_finished.notify_all();
}

void ChecksInProgress::waitForRoom(qsizetype limit, const std::function<bool()>& giveUp) {
    constexpr std::chrono::milliseconds betweenLooks(50);
    std::unique_lock lock(m_mutex);
    while (m_details.size() >= limit && !giveUp())
        m_finished.wait_for(lock, betweenLooks);
}

} // namespace Stemhaven
