#include "project/RecoveryRun.h"

#include "app/errors/Guarded.h"

#include <QDebug>

#include <exception>

namespace Stemhaven {

namespace {

/// With its control characters escaped: names of strangers' files reach the terminal.
QString quoted(const QString& path) {
    QString text;
    QDebug(&text).nospace() << path;
    return text;
}

QString plan(const RecoverableProject& project) {
    QStringList repairs;
    if (project.needsRestore())
        repairs += QStringLiteral("restore alternative %1 from backup %2")
                       .arg(project.alternativeName, project.backupName);
    if (project.needsInformation())
        repairs +=
            QStringLiteral("write ProjectInformation.plist for alternative %1").arg(project.alternativeName);
    return quoted(project.path) + QStringLiteral(": ") + repairs.join(QStringLiteral(", "));
}

/// One run while it goes on.
class Running {
public:
    explicit Running(const RecoveryRun& run) : m_run(run) {}

    RecoveryRun::Report run(const QStringList& folders);

private:
    QList<RecoverableProject> search(const QStringList& folders);
    bool isConfirmed(qsizetype count) const;
    void recover(const QList<RecoverableProject>& projects);
    void recover(const RecoverableProject& project);
    void print(const QString& line);

    const RecoveryRun& m_run;
    RecoveryRun::Report m_report;
};

RecoveryRun::Report Running::run(const QStringList& folders) {
    const auto projects = search(folders);
    if (m_report.isEndedEarly || m_run.isDryRun || projects.isEmpty())
        return m_report;
    if (!isConfirmed(projects.size())) {
        print(QStringLiteral("Nothing was changed."));
        m_report.isEndedEarly = true;
        return m_report;
    }
    recover(projects);
    return m_report;
}

QList<RecoverableProject> Running::search(const QStringList& folders) {
    print(QStringLiteral("Searching for recoverable projects..."));
    const auto result = RecoverySearch{m_run.progressed, m_run.isStopped}.find(folders);
    m_report.looked = result.progress.bundlesLookedAt;
    m_report.unreadable = static_cast<int>(result.unreadable.size());
    m_report.found = result.progress.projectsFound;
    for (const auto& path : result.unreadable)
        print(QStringLiteral("Could not be looked at: ") + quoted(path));
    for (const auto& project : result.projects)
        print(plan(project));
    print(QStringLiteral("Found %1 recoverable projects!").arg(m_report.found));
    m_report.isEndedEarly = result.isStopped;
    if (result.isStopped)
        print(QStringLiteral("Stopped. Nothing was changed."));
    return result.projects;
}

bool Running::isConfirmed(qsizetype count) const {
    return m_run.isConfirmed ||
        (m_run.confirm &&
         m_run.confirm(
             QStringLiteral("Do you want Stemhaven to recover %1 project(s)? Stemhaven will create missing "
                            "files to allow the projects to be opened again. Warning: this modifies the "
                            ".logicx contents! Backup first to be safe.")
                 .arg(count)));
}

void Running::recover(const QList<RecoverableProject>& projects) {
    for (const auto& project : projects) {
        m_report.isEndedEarly = m_run.isStopped && m_run.isStopped();
        if (m_report.isEndedEarly) {
            print(QStringLiteral("Stopped."));
            break;
        }
        recover(project);
    }
    print(QStringLiteral("Stemhaven recovered %1 project(s)!").arg(m_report.recovered));
}

void Running::recover(const RecoverableProject& project) {
    const auto outcome = tryToRecover(project);
    if (outcome.isRecovered) {
        ++m_report.recovered;
        print(QStringLiteral("Recovered %1/%2 projects: %3")
                  .arg(m_report.recovered)
                  .arg(m_report.found)
                  .arg(quoted(project.path)));
    } else {
        ++m_report.failed;
        print(QStringLiteral("Error occurred during project recovery! %1: %2")
                  .arg(quoted(project.path), outcome.failure));
    }
}

void Running::print(const QString& line) {
    m_report.lines += line;
    if (m_run.printed)
        m_run.printed(line);
}

} // namespace

RecoveryOutcome tryToRecover(const RecoverableProject& project) {
    RecoveryOutcome outcome;
    outcome.failure = QStringLiteral("Unknown exception caught...");
    loggingFailures(QStringLiteral("Error occurred during project recovery!"), [&] {
        try {
            outcome.isRecovered = project.recover();
            outcome.failure = outcome.isRecovered
                ? QString()
                : QStringLiteral("ProjectInformation.plist could not be written there.");
        } catch (const std::exception& error) {
            outcome.failure = QString::fromUtf8(error.what());
            throw;
        }
    });
    return outcome;
}

RecoveryRun::Report RecoveryRun::run(const QStringList& folders) const {
    return Running(*this).run(folders);
}

} // namespace Stemhaven
