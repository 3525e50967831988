#include "monitor/Places.h"

#include "platform/RemoteCalls.h"
#include "project/ProjectDetails.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

/// Of the lowest folder above path that exists.
SystemUniqueFileID folderAbove(const QString& path) {
    SystemUniqueFileID folder;
    qsizetype end = path.size();
    while (!folder.valid && end > 0) {
        end = path.lastIndexOf(u'/', end - 1);
        folder = SystemUniqueFileID(QFile::encodeName(path.left(std::max<qsizetype>(end, 1))).constData());
    }
    return folder;
}

} // namespace

Places::Places(QStringList roots) : m_roots(std::move(roots)) {}

std::optional<SystemUniqueFileID> Places::bundleAt(const QString& path) {
    return RemoteCalls::run(path, [path] { return ProjectDetails(path).sufid; });
}

bool Places::isAway(const ProjectRecord& record, const SystemUniqueFileID& found) const {
    // Its place was given up when another bundle was found there: it is not known where to look.
    if (record.filepath.isEmpty())
        return false;
    QStringList rootsAbove;
    std::copy_if(m_roots.begin(), m_roots.end(), std::back_inserter(rootsAbove), [&](const QString& root) {
        return record.filepath.startsWith(root);
    });
    return RemoteCalls::run(
               record.path(), [record, found, rootsAbove] { return isMissing(record, found, rootsAbove); })
        .value_or(true);
}

bool Places::isMissing(
    const ProjectRecord& record, const SystemUniqueFileID& found, const QStringList& rootsAbove) {
    const bool isRootMissing = std::any_of(
        rootsAbove.begin(), rootsAbove.end(), [](const QString& root) { return !QDir(root).isReadable(); });
    if (isRootMissing)
        return true;
    const auto recorded = SystemUniqueFileID::fromString(record.sufid);
    const auto folder = folderAbove(record.path());
    if (!recorded.valid || folder.device == recorded.device)
        return false;
    // Some systems number their devices anew with each start. Then the bundle has kept its inode, and lies
    // where the volume of its old place is now.
    const bool isRenumbered = found.inode == recorded.inode && found.device == folder.device;
    return !isRenumbered;
}

} // namespace Stemhaven
