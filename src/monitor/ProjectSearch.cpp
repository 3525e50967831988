#include "monitor/ProjectSearch.h"

#include "app/Shutdown.h"
#include "app/errors/Guarded.h"
#include "monitor/FolderWalk.h"
#include "project/NoteFile.h"

#include <QDebug>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <utility>

namespace Stemhaven {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds betweenReports(100);

} // namespace

ProjectSearch::ProjectSearch(Callbacks callbacks) : m_callbacks(std::move(callbacks)) {}

ProjectSearch::~ProjectSearch() {
    m_stop = true;
    m_future.waitForFinished();
}

bool ProjectSearch::request(bool restartWhenDone) {
    const std::lock_guard lock(m_mutex);
    // The pool takes no more work then.
    if (isInterrupted())
        return false;
    m_restartWanted = m_restartWanted || restartWhenDone;
    if (m_inProgress) {
        m_again = true;
        return true;
    }
    m_inProgress = true;
    ++m_unsettledWalks;
    m_again = false;
    m_future = QtConcurrent::run(QThreadPool::globalInstance(), [this] {
        loggingFailures(QStringLiteral("Search for projects failed."), [this] { run(); });
    });
    return true;
}

void ProjectSearch::settled() {
    const std::lock_guard lock(m_mutex);
    --m_unsettledWalks;
}

bool ProjectSearch::isUnsettled() const {
    const std::lock_guard lock(m_mutex);
    return m_unsettledWalks > 0;
}

void ProjectSearch::run() {
    const auto known = m_callbacks.knownPaths();
    qDebug() << "ProjectMonitor: Beginning search for new projects";
    bool restartWanted = false;
    bool passWanted = true;
    while (passWanted) {
        m_again = false;
        loggingFailures(QStringLiteral("Search for projects failed."), [&] { walkRoots(known); });
        const std::lock_guard lock(m_mutex);
        passWanted = m_again && !isInterrupted();
        if (!passWanted) {
            m_inProgress = false;
            restartWanted = std::exchange(m_restartWanted, false);
        }
    }
    if (!isInterrupted())
        m_callbacks.walked(known, restartWanted);
}

void ProjectSearch::walkRoots(const QSet<QString>& known) {
    const auto giveUp = [this] {
        return m_again || isInterrupted();
    };
    int found = 0;
    std::set<QString> unreadable;
    auto lastReport = Clock::now();
    const FolderWalk walk(
        {[&](const QString& bundlePath) {
             ++found;
             if (Clock::now() - lastReport >= betweenReports) {
                 lastReport = Clock::now();
                 m_callbacks.progressed(found);
             }
             if (known.contains(bundlePath) && !lacksNote(bundlePath))
                 return;
             m_callbacks.waitForRoom(giveUp);
             if (!giveUp())
                 m_callbacks.check(bundlePath);
         },
         [&](const QString& folder, const QString& reason) {
             unreadable.insert(folder);
             // Once, not in each search, until it can be read again.
             if (m_unreadable.insert(folder).second)
                 qWarning() << "Could not read folder. Skipping: " << folder << reason;
         },
         giveUp});
    const auto roots = m_callbacks.roots();
    for (const auto& root : roots)
        walk.walk(root);
    if (!giveUp())
        m_unreadable = std::move(unreadable);
}

bool ProjectSearch::isInterrupted() const {
    return m_stop || Shutdown::hasBegun();
}

} // namespace Stemhaven
