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
      m_model(model),
      m_spacing(spacing, this) {
    connect(&model, &ProjectsTableModel::reloaded, this, [this] { finish(true); });
    connect(&model, &ProjectsTableModel::reloadFailed, this, [this] { finish(false); });
    connect(&m_spacing, &SpacedCall::due, this, [this] { request(Reason::Refresh); });
}

void ReloadScheduler::request(Reason reason) {
    m_isWaiting = true;
    m_waitingReason = std::max(m_waitingReason, reason);
    if (!m_model.isReloading())
        start();
}

void ReloadScheduler::requestSpaced() {
    m_spacing.request();
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
