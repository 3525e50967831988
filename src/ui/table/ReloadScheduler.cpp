#include "ui/table/ReloadScheduler.h"

#include "ui/table/ProjectsTableModel.h"

#include <utility>

ReloadScheduler::ReloadScheduler(ProjectsTableModel& model, QObject* parent)
    : QObject(parent),
      m_model(model) {
    connect(&model, &ProjectsTableModel::reloaded, this, [this] { finish(true); });
    connect(&model, &ProjectsTableModel::reloadFailed, this, [this] { finish(false); });
}

void ReloadScheduler::request(Reason reason) {
    m_isWaiting = true;
    if (reason == Reason::NewQuery)
        m_waitingReason = reason;
    if (!m_model.isReloading())
        start();
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
    if (m_isWaiting && !m_model.isReloading())
        start();
}
