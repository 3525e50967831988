#include "monitor/Rechecks.h"

#include <utility>

namespace Stemhaven {

Rechecks::Rechecks(std::chrono::milliseconds delay, std::function<void(const QString&)> check)
    : m_check(std::move(check)) {
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &Rechecks::checkWaiting);
}

void Rechecks::bundleUnreadable(const QString& bundlePath) {
    if (m_checkedOnceMore.remove(bundlePath))
        return;
    m_checkedOnceMore.insert(bundlePath);
    m_waiting.insert(bundlePath);
    m_timer.start();
}

void Rechecks::databaseFailed(const QString& bundlePath) {
    m_waiting.insert(bundlePath);
    m_timer.start();
}

void Rechecks::bundleWritten(const QString& bundlePath) {
    m_checkedOnceMore.remove(bundlePath);
}

void Rechecks::checkWaiting() {
    const auto waiting = std::exchange(m_waiting, {});
    for (const auto& bundlePath : waiting)
        m_check(bundlePath);
}

} // namespace Stemhaven
