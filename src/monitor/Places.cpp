#include "monitor/Places.h"

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

SystemUniqueFileID Places::bundleAt(const QString& path) {
    return ProjectDetails(path).sufid;
}

bool Places::isAway(const ProjectRecord& record, const SystemUniqueFileID& found) const {
    // Its place was given up when another bundle was found there: it is not known where to look.
    if (record.filepath.isEmpty())
        return false;
    const auto path = record.path();
    const bool isRootMissing = std::any_of(m_roots.begin(), m_roots.end(), [&](const QString& root) {
        return path.startsWith(root) && !QDir(root).isReadable();
    });
    if (isRootMissing)
        return true;
    const auto recorded = SystemUniqueFileID::fromString(record.sufid);
    const auto folder = folderAbove(path);
    if (!recorded.valid || folder.device == recorded.device)
        return false;
    // Some systems number their devices anew with each start. Then the bundle has kept its inode, and lies
    // where the volume of its old place is now.
    const bool isRenumbered = found.inode == recorded.inode && found.device == folder.device;
    return !isRenumbered;
}

} // namespace Stemhaven
