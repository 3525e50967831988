#include "monitor/ProjectSearch.h"

#include "app/Shutdown.h"
#include "app/errors/Guarded.h"
#include "platform/RemoteCalls.h"
#include "platform/TreeWalk.h"
#include "project/BundleSuffixes.h"
#include "project/NoteFile.h"
#include "project/ProjectDetails.h"

#include <QDebug>
#include <QFile>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <system_error>
#include <utility>

namespace Stemhaven {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds betweenReports(100);

/// Whether the bundle at path is the recorded one, and has its note.
bool isAsRecorded(const QString& path, const RecordedBundles::ByPath& recorded) {
    const auto known = recorded.constFind(path);
    if (known == recorded.cend())
        return false;
    const QString folder = path.left(path.lastIndexOf(u'/'));
    const auto answer = RemoteCalls::run(folder, [path, sufid = known->sufid] {
        return ProjectDetails(path).sufid == sufid && !lacksNote(path);
    });
    // Where there is no answer now, the next search will ask.
    return answer.value_or(true);
}

/// What is on record below the roots and was not seen by a walk, because it is not there.
QSet<QString>
missingOf(const RecordedBundles::ByPath& recorded, const QStringList& roots, const QSet<QString>& seen) {
    QSet<QString> missing;
    for (auto it = recorded.keyBegin(); it != recorded.keyEnd(); ++it) {
        const QString& path = *it;
        const bool isBelowRoot = std::any_of(
            roots.begin(), roots.end(), [&](const QString& root) { return path.startsWith(root); });
        if (isBelowRoot && !seen.contains(path) && !pathExists(path))
            missing.insert(path);
    }
    return missing;
}

} // namespace

ProjectSearch::ProjectSearch(std::shared_ptr<const RecordedBundles> recorded, Callbacks callbacks)
    : m_recorded(std::move(recorded)),
      m_callbacks(std::move(callbacks)) {}

void ProjectSearch::stop() {
    m_stop = true;
    QList<QFuture<void>> futures;
    {
        const std::lock_guard lock(m_mutex);
        futures = m_futures;
    }
    for (auto& future : futures)
        future.waitForFinished();
}

void ProjectSearch::interrupt() {
    const std::lock_guard lock(m_mutex);
    m_again = false;
    m_interrupted = m_inProgress.load();
}

bool ProjectSearch::request(bool restartWhenDone) {
    const std::lock_guard lock(m_mutex);
    // The pool takes no more work then.
    if (isEnding())
        return false;
    m_restartWanted = m_restartWanted || restartWhenDone;
    if (m_inProgress) {
        m_again = true;
        m_interrupted = false;
        return true;
    }
    m_inProgress = true;
    ++m_unsettledWalks;
    m_again = false;
    m_interrupted = false;
    m_futures.removeIf([](const QFuture<void>& future) { return future.isFinished(); });
    m_futures.append(QtConcurrent::run(QThreadPool::globalInstance(), [this] {
        loggingFailures(QStringLiteral("Search for projects failed."), [this] { run(); });
    }));
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

bool ProjectSearch::wasUnreadable(const QString& root) const {
    const std::lock_guard lock(m_mutex);
    return m_unreadableRoots.contains(root);
}

void ProjectSearch::run() {
    const auto recordedBefore = m_recorded->revision();
    qDebug() << "ProjectMonitor: Beginning search for new projects";
    bool restartWanted = false;
    bool passWanted = true;
    while (passWanted) {
        m_again = false;
        loggingFailures(QStringLiteral("Search for projects failed."), [&] { walkRoots(m_recorded->all()); });
        const std::lock_guard lock(m_mutex);
        passWanted = m_again && !isEnding();
        if (!passWanted) {
            m_inProgress = false;
            restartWanted = std::exchange(m_restartWanted, false);
        }
    }
    if (!isEnding())
        m_callbacks.walked(recordedBefore, restartWanted);
}

void ProjectSearch::walkRoots(const RecordedBundles::ByPath& recorded) {
    const auto giveUp = [this] {
        return m_again || m_interrupted || isEnding();
    };
    int found = 0;
    QSet<QString> seen;
    std::set<QString> unreadable;
    auto lastReport = Clock::now();
    TreeWalk walk;
    walk.onBundle = [&](const std::string& bundle) {
        const QString bundlePath = QFile::decodeName(bundle.c_str());
        ++found;
        seen.insert(bundlePath);
        if (Clock::now() - lastReport >= betweenReports) {
            lastReport = Clock::now();
            m_callbacks.progressed(found);
        }
        if (isAsRecorded(bundlePath, recorded))
            return;
        m_callbacks.waitForRoom(giveUp);
        if (!giveUp())
            m_callbacks.check(bundlePath);
    };
    walk.onUnreadable = [&](const std::string& path, int error) {
        const QString folder = QFile::decodeName(path.c_str());
        unreadable.insert(folder);
        // Once, not in each search, until it can be read again.
        if (m_unreadable.insert(folder).second)
            qWarning() << "Could not read folder. Skipping: " << folder
                       << QString::fromLocal8Bit(std::generic_category().message(error));
    };
    walk.isStopped = giveUp;
    // A remote file system that does not answer holds up neither the other roots nor the end.
    walk.list = &FolderListing::withPatience;
    const BundleNames names(bundleSuffixes());
    const auto roots = m_callbacks.roots();
    for (const auto& root : roots) {
        walk.walk(QFile::encodeName(root).toStdString(), names);
        const std::lock_guard lock(m_mutex);
        if (unreadable.contains(root))
            m_unreadableRoots.insert(root);
        else
            m_unreadableRoots.remove(root);
    }
    if (giveUp())
        return;
    m_unreadable = std::move(unreadable);
    m_callbacks.looked(roots, missingOf(recorded, roots, seen));
}

bool ProjectSearch::isEnding() const {
    return m_stop || Shutdown::hasBegun();
}

} // namespace Stemhaven
