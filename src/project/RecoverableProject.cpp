#include "project/RecoverableProject.h"

#include "project/BundleInspection.h"
#include "project/BundleSuffixes.h"
#include "project/ProjectRepair.h"

#include <QDebug>

namespace Stemhaven {

namespace {

using BundleInspection::Links;

constexpr int lastAlternative = 999;
constexpr int lastBackup = 99;

/// The alternative whose files are complete and newest; the first one where none is complete.
QString newestAlternative(const QString& alternatives, const QStringList& names) {
    QString newest = QStringLiteral("000");
    std::optional<QDateTime> newestTime;
    for (const auto& name : names) {
        const auto time = BundleInspection::completeSnapshot(alternatives + u'/' + name, Links::Follow);
        if (time && (!newestTime || *time > *newestTime)) {
            newest = name;
            newestTime = time;
        }
    }
    return newest;
}

/// Fills in which snapshots the alternative has.
void examineAlternative(const QString& folder, RecoverableProject& project) {
    auto newestTime = BundleInspection::completeSnapshot(folder, Links::Follow);
    project.alternativeComplete = newestTime.has_value();
    const QString backups = folder + QStringLiteral("/Project File Backups");
    if (!BundleInspection::isFolder(backups))
        return;
    const auto names = BundleInspection::numberedFolders(backups, lastBackup);
    for (const auto& name : names) {
        // A file that leads out of the bundle is no backup: a stranger's bundle could name any file there.
        const auto time = BundleInspection::completeSnapshot(backups + u'/' + name, Links::Refuse);
        if (time && (!newestTime || *time > *newestTime)) {
            project.backupFound = true;
            project.backupName = name;
            newestTime = time;
        }
    }
}

} // namespace

RecoverableProject::RecoverableProject(const QString& bundlePath) : path(bundlePath) {}

bool RecoverableProject::recover(const StepObserver& afterStep) const {
    QString suffix;
    if (!isLogicProjectAssetPath(path, suffix)) {
        qWarning() << "Attempted to recover project with unsupported extension: " << path;
        return false;
    }
    return ProjectRepair(*this, afterStep).run();
}

std::optional<RecoverableProject> isProjectRecoverable(const QString& bundlePath) {
    if (!BundleInspection::isFolder(bundlePath))
        return std::nullopt;
    RecoverableProject project(bundlePath);
    const auto information = BundleInspection::readInformation(bundlePath);
    project.projectInformationReadable = information.has_value();

    const QString alternatives = bundlePath + QStringLiteral("/Alternatives");
    QStringList names;
    if (BundleInspection::isFolder(alternatives))
        names = BundleInspection::numberedFolders(alternatives, lastAlternative);
    for (const auto& name : names)
        project.alternativeNumbers += name.toInt();
    project.alternativeName =
        information ? information->getActiveAlternativeDir() : newestAlternative(alternatives, names);
    if (names.contains(project.alternativeName))
        examineAlternative(alternatives + u'/' + project.alternativeName, project);

    if (!project.needsRestore() && !project.needsInformation())
        return std::nullopt;
    return project;
}

} // namespace Stemhaven
