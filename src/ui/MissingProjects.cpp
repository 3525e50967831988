#include "ui/MissingProjects.h"

#include "app/errors/Exception.h"
#include "database/MissingRecords.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"

#include <QDebug>
#include <QPointer>

#include <chrono>
#include <mutex>
#include <utility>

using Stemhaven::ProjectMonitor;

namespace {

constexpr std::chrono::milliseconds spacing{500};

} // namespace

/// The monitor's paths as the worker gets them: while a search looks at very many, they are worth a wait that
/// the GUI thread must not have.
class MissingProjects::Paths {
public:
    explicit Paths(const ProjectMonitor& monitor) : m_monitor(&monitor) {}

    QSet<QString> read() {
        const std::lock_guard lock(m_mutex);
        return m_monitor ? m_monitor->missingBundles() : QSet<QString>();
    }

    /// The monitor may end from now on.
    void close() {
        const std::lock_guard lock(m_mutex);
        m_monitor = nullptr;
    }

private:
    std::mutex m_mutex;
    const ProjectMonitor* m_monitor;
};

MissingProjects::MissingProjects(Stemhaven::TaskManager& tasks, ProjectMonitor& monitor, QObject* parent)
    : QObject(parent),
      m_tasks(tasks),
      m_paths(std::make_shared<Paths>(monitor)),
      m_spacing(spacing, this) {
    connect(&m_spacing, &SpacedCall::due, this, &MissingProjects::start);
    connect(&monitor, &ProjectMonitor::missingBundlesChanged, this, &MissingProjects::request);
    // A path may have got a record, and a record may have lost its path.
    connect(&monitor, &ProjectMonitor::projectsDbModified, this, &MissingProjects::request);
    connect(&monitor, &ProjectMonitor::databaseInitialized, this, &MissingProjects::request);
    request();
}

MissingProjects::~MissingProjects() {
    m_paths->close();
}

void MissingProjects::start() {
    m_again = m_isBusy;
    if (std::exchange(m_isBusy, true))
        return;
    const auto found = std::make_shared<QSet<qint64>>();
    auto task = std::make_shared<Stemhaven::SimpleTask>([&tasks = m_tasks, paths = m_paths, found] {
        *found = Stemhaven::readMissingRecords(tasks.mainDatabase(), paths->read());
    });
    task->setSuccessCallback([self = QPointer(this), found](const auto& /*task*/) {
        if (self)
            self->finish(true, *found);
    });
    task->setErrorCallback([self = QPointer(this)](const auto& /*task*/, const Stemhaven::Exception& error) {
        qWarning() << "Could not look up the projects that are missing:" << error;
        if (self)
            self->finish(false, {});
    });
    m_tasks.addTask(std::move(task));
}

void MissingProjects::finish(bool succeeded, const QSet<qint64>& projects) {
    m_isBusy = false;
    if (succeeded && projects != m_missing) {
        m_missing = projects;
        emit changed(m_missing);
    }
    if (std::exchange(m_again, false))
        request();
}
