#include "monitor/Rechecks.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

Rechecks::Rechecks(std::chrono::milliseconds delay, std::function<void(const QString&)> check)
    : m_check(std::move(check)),
      m_delay(delay) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Rechecks::checkWaiting);
}

void Rechecks::bundleUnreadable(const QString& bundlePath) {
    if (m_checkedOnceMore.remove(bundlePath))
        return;
    m_checkedOnceMore.insert(bundlePath);
    m_waiting.insert(bundlePath);
    m_timer.start(m_delay);
}

void Rechecks::databaseFailed(const QString& bundlePath) {
    m_waiting.insert(bundlePath);
    // What never succeeds must not keep the program busy for ever.
    constexpr int mostDoublings = 10;
    m_timer.start(m_delay * (1 << std::min(m_failuresInARow++, mostDoublings)));
}

void Rechecks::bundleWritten(const QString& bundlePath) {
    m_checkedOnceMore.remove(bundlePath);
    m_failuresInARow = 0;
}

void Rechecks::checkWaiting() {
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& bundlePath : waiting)
        m_check(bundlePath);
}

} // namespace Stemhaven
