#include "monitor/Rechecks.h"

#include <algorithm>
#include <utility>

namespace Stemhaven {

Rechecks::Rechecks(std::chrono::milliseconds delay, Check check)
    : m_check(std::move(check)),
      m_delay(delay),
      m_databaseDelay(delay) {
    m_delayTimer.setSingleShot(true);
    connect(&m_delayTimer, &QTimer::timeout, this, &Rechecks::checkDelayed);
    m_databaseTimer.setSingleShot(true);
    connect(&m_databaseTimer, &QTimer::timeout, this, &Rechecks::tryDatabase);
}

void Rechecks::bundleUnreadable(const QString& bundlePath) {
    if (m_checkedOnceMore.remove(bundlePath))
        return;
    m_checkedOnceMore.insert(bundlePath);
    checkLater(bundlePath);
}

void Rechecks::checkLater(const QString& bundlePath) {
    m_delayed.insert(bundlePath);
    m_delayTimer.start(m_delay);
}

void Rechecks::checkDelayed() {
    const auto delayed = std::exchange(m_delayed, {});
    for (const auto& bundlePath : delayed)
        m_check(bundlePath);
}

void Rechecks::databaseFailed(const QString& bundlePath) {
    m_waitingForNextRound.insert(bundlePath);
    m_areWaiting = true;
    m_databaseTimer.start(m_databaseDelay);
}

void Rechecks::waitForDatabase(const QString& bundlePath) {
    m_waitingForNextRound.insert(bundlePath);
    m_areWaiting = true;
    if (!m_databaseTimer.isActive())
        m_databaseTimer.start(m_databaseDelay);
}

void Rechecks::bundleWritten(const QString& bundlePath) {
    m_checkedOnceMore.remove(bundlePath);
    m_databaseDelay = m_delay;
}

void Rechecks::bundleVanished(const QString& bundlePath) {
    m_checkedOnceMore.remove(bundlePath);
}

void Rechecks::checkEnded() {
    if (m_areWaiting)
        checkNextWaiting();
}

void Rechecks::tryDatabase() {
    // Often enough that nobody waits long once the database answers, and no more often, as each attempt is
    // logged.
    constexpr int mostDelays = 8;
    m_databaseDelay = std::min(m_databaseDelay * 2, m_delay * mostDelays);
    checkNextWaiting();
}

void Rechecks::checkNextWaiting() {
    if (m_waiting.isEmpty())
        m_waiting.swap(m_waitingForNextRound);
    bool isChecking = false;
    while (!isChecking && !m_waiting.isEmpty()) {
        const auto next = *m_waiting.cbegin();
        m_waiting.remove(next);
        isChecking = m_check(next);
    }
    m_areWaiting = !m_waiting.isEmpty() || !m_waitingForNextRound.isEmpty();
    // Goes on from here if the one being checked fails, and sooner if it does not.
    if (m_areWaiting)
        m_databaseTimer.start(m_databaseDelay);
}

} // namespace Stemhaven
