#include "ui/table/ReloadScheduler.h"

#include "ui/table/ProjectsTableModel.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::milliseconds spacing{250};

} // namespace

ReloadScheduler::ReloadScheduler(ProjectsTableModel& model, QObject* parent)
    : QObject(parent),
      m_model(model) {
    connect(&model, &ProjectsTableModel::reloaded, this, [this] { finish(true); });
    connect(&model, &ProjectsTableModel::reloadFailed, this, [this] { finish(false); });
    m_spacing.setSingleShot(true);
    m_spacing.setInterval(spacing);
    connect(&m_spacing, &QTimer::timeout, this, [this] {
        if (std::exchange(m_wantedAfterSpacing, false))
            requestSpaced();
    });
}

void ReloadScheduler::request(Reason reason) {
    m_isWaiting = true;
    m_waitingReason = std::max(m_waitingReason, reason);
    if (!m_model.isReloading())
        start();
}

void ReloadScheduler::requestSpaced() {
    if (m_spacing.isActive()) {
        m_wantedAfterSpacing = true;
        return;
    }
    m_spacing.start();
    request(Reason::Refresh);
}

void ReloadScheduler::start() {
    m_isWaiting = false;
    m_runningReason = std::exchange(m_waitingReason, Reason::Refresh);
    m_model.reload();
}

void ReloadScheduler::finish(bool succeeded) {
    // Before the next one is started: whoever is told now reads rows that nobody exchanges.
    if (succeeded)
        emit reloaded(m_runningReason);
    else
        emit failed();
    if (m_isWaiting && !m_model.isReloading())
        start();
}
