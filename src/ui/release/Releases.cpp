#include "ui/release/Releases.h"

#include "app/errors/Guarded.h"
#include "monitor/ProjectMonitor.h"
#include "ui/SpacedCall.h"
#include "ui/release/ReleaseCalendar.h"
#include "ui/release/ReleaseDialog.h"

#include <QAction>

#include <chrono>

using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;

namespace {

constexpr std::chrono::seconds noticeSpacing{1};

} // namespace

Releases::Releases(
    Stemhaven::TaskManager& tasks, EditHistory& history, ProjectMonitor& monitor, QWidget& window)
    : QObject(&window),
      m_tasks(tasks),
      m_history(history),
      m_monitor(monitor),
      m_window(window) {}

void Releases::openDialog(qint64 project) {
    openDialogOver(project, m_window);
}

void Releases::openDialogOver(qint64 project, QWidget& window) {
    if (m_dialog && m_dialog->isVisible()) {
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new ReleaseDialog(m_tasks, m_history, project, &window);
    m_dialog->open();
}

void Releases::showCalendar(const QList<QAction*>& actions) {
    if (!m_calendar) {
        makeCalendar();
        m_calendar->addActions(actions);
    }
    m_calendar->setWindowState(m_calendar->windowState() & ~Qt::WindowMinimized);
    m_calendar->show();
    m_calendar->raise();
    m_calendar->activateWindow();
}

void Releases::makeCalendar() {
    m_calendar = new ReleaseCalendar(m_tasks, m_history, &m_window);
    connect(m_calendar, &ReleaseCalendar::openRequested, this, [this](qint64 project) {
        guarded(tr("Showing release dialog failed."), [&] { openDialogOver(project, *m_calendar); });
    });
    auto* notices = new SpacedCall(noticeSpacing, m_calendar);
    connect(notices, &SpacedCall::due, m_calendar, &ReleaseCalendar::reload);
    connect(&m_monitor, &ProjectMonitor::databaseInitialized, m_calendar, &ReleaseCalendar::reload);
    connect(&m_monitor, &ProjectMonitor::projectsDbModified, notices, &SpacedCall::request);
}

void Releases::storeState() const {
    if (m_calendar)
        m_calendar->storeState();
}
