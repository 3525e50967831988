#include "project/RecoverySearch.h"

#include "app/errors/IOException.h"
#include "platform/RemoteCalls.h"
#include "platform/TreeWalk.h"
#include "project/BundleSuffixes.h"
#include "project/SystemUniqueFileID.h"

#include <QDebug>
#include <QFile>
#include <QSet>

#include <chrono>
#include <system_error>
#include <utility>

namespace Stemhaven {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds betweenReports(100);

/// One search while it goes on.
class RunningSearch {
public:
    explicit RunningSearch(const RecoverySearch& search) : m_search(search) {}

    RecoverySearch::Result find(const QStringList& folders);

private:
    void walk(const QString& folder);
    void examine(const QString& bundle);
    void add(const RecoverableProject& project);
    void pass(const QString& path, const QString& why);
    void report();

    bool isStopped() const { return m_search.isStopped && m_search.isStopped(); }

    const RecoverySearch& m_search;
    RecoverySearch::Result m_result;
    /// The identities of the projects found.
    QSet<QString> m_found;
    Clock::time_point m_lastReport = Clock::now();
};

RecoverySearch::Result RunningSearch::find(const QStringList& folders) {
    for (const auto& folder : folders) {
        if (!isStopped())
            walk(folder);
    }
    m_result.isStopped = isStopped();
    report();
    return std::move(m_result);
}

void RunningSearch::walk(const QString& folder) {
    TreeWalk walk;
    walk.list = &FolderListing::withPatience;
    walk.isStopped = [this] {
        return isStopped();
    };
    walk.onBundle = [this](const std::string& bundle) {
        examine(QFile::decodeName(bundle.c_str()));
    };
    walk.onUnreadable = [this](const std::string& path, int error) {
        pass(QFile::decodeName(path.c_str()), QString::fromLocal8Bit(std::generic_category().message(error)));
    };
    walk.walk(QFile::encodeName(folder).toStdString(), BundleNames(bundleSuffixes()));
}

void RunningSearch::examine(const QString& bundle) {
    ++m_result.progress.bundlesLookedAt;
    try {
        const auto project = RemoteCalls::run(bundle, [bundle] { return isProjectRecoverable(bundle); });
        if (!project)
            pass(bundle, QStringLiteral("no answer"));
        else if (*project)
            add(**project);
    } catch (const std::exception& error) {
        pass(bundle, QString::fromUtf8(error.what()));
    }
    if (Clock::now() - m_lastReport >= betweenReports)
        report();
}

void RunningSearch::add(const RecoverableProject& project) {
    // One folder may lie in another one, or be reached twice.
    const SystemUniqueFileID identity(QFile::encodeName(project.path).constData());
    if (identity.valid && m_found.contains(identity))
        return;
    m_found.insert(identity);
    m_result.projects += project;
    ++m_result.progress.projectsFound;
}

void RunningSearch::pass(const QString& path, const QString& why) {
    qWarning() << "Could not look for damage. Skipping: " << path << why;
    m_result.unreadable += path;
}

void RunningSearch::report() {
    m_lastReport = Clock::now();
    if (m_search.progressed)
        m_search.progressed(m_result.progress);
}

} // namespace

RecoverySearch::Result RecoverySearch::find(const QStringList& folders) const {
    return RunningSearch(*this).find(folders);
}

QList<RecoverableProject> findRecoverableProjects(const QStringList& folders) {
    return RecoverySearch().find(folders).projects;
}

} // namespace Stemhaven
