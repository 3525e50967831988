#include "ui/MissingProjects.h"

#include "app/errors/Exception.h"
#include "database/MissingRecords.h"
#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"

#include <QDebug>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

using Stemhaven::ProjectMonitor;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds shortestPause{500};
constexpr std::chrono::milliseconds pauseAfterFailure{5000};
/// Of a pause, in times of what the look before it took.
constexpr int pauseShare = 10;

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

/// What the worker finds.
struct MissingProjects::Look {
    QSet<qint64> projects;
    bool isNews = false;
    bool hasFailed = false;
    Clock::duration cost{};
};

MissingProjects::MissingProjects(Stemhaven::TaskManager& tasks, ProjectMonitor& monitor, QObject* parent)
    : QObject(parent),
      m_tasks(tasks),
      m_paths(std::make_shared<Paths>(monitor)) {
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isRequested)
            request();
    });
    connect(&monitor, &ProjectMonitor::missingBundlesChanged, this, &MissingProjects::request);
    // A path may have got a record, and a record may have lost its path.
    connect(&monitor, &ProjectMonitor::projectsDbModified, this, &MissingProjects::request);
    connect(&monitor, &ProjectMonitor::databaseInitialized, this, &MissingProjects::request);
    request();
}

MissingProjects::~MissingProjects() {
    m_paths->close();
}

void MissingProjects::request() {
    m_isRequested = m_isBusy || m_pause.isActive();
    if (!m_isRequested)
        start();
}

void MissingProjects::start() {
    m_isBusy = true;
    const auto look = std::make_shared<Look>();
    auto task = std::make_shared<Stemhaven::SimpleTask>(
        [&tasks = m_tasks, paths = m_paths, look, before = m_missing] {
            const auto start = Clock::now();
            look->projects = Stemhaven::readMissingRecords(tasks.mainDatabase(), paths->read());
            look->isNews = look->projects != before;
            look->cost = Clock::now() - start;
        });
    const auto end = [self = QPointer(this), look] {
        if (self)
            self->finish(*look);
    };
    task->setSuccessCallback([end](const auto& /*task*/) { end(); });
    task->setErrorCallback(
        [end, look, isFirst = !m_hasFailed](const auto& /*task*/, const Stemhaven::Exception& error) {
            if (isFirst)
                qWarning() << "Could not look up the projects that are missing:" << error;
            look->hasFailed = true;
            end();
        });
    m_tasks.addTask(std::move(task));
}

void MissingProjects::finish(const Look& look) {
    m_isBusy = false;
    m_hasFailed = look.hasFailed;
    m_isRequested = m_isRequested || m_hasFailed;
    const auto pause = std::chrono::duration_cast<std::chrono::milliseconds>(pauseShare * look.cost);
    m_pause.start(m_hasFailed ? pauseAfterFailure : std::max(shortestPause, pause));
    if (!look.isNews)
        return;
    m_missing = look.projects;
    emit changed(m_missing);
}
