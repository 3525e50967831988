#include "monitor/Places.h"

#include "platform/RemoteCalls.h"
#include "project/ProjectDetails.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>
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
    // A record that gave up its place has a name only, which is no path.
    if (!path.startsWith(u'/'))
        return SystemUniqueFileID();
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
    // As where a folder on the way may not be entered.
    std::error_code ignored;
    const auto there = std::filesystem::status(QFile::encodeName(record.path()).toStdString(), ignored);
    if (there.type() == std::filesystem::file_type::none)
        return true;
    const auto recorded = SystemUniqueFileID::fromString(record.sufid);
    return recorded.valid && folderAbove(record.path()).device != recorded.device &&
        !isRenumbered(record, found);
}

bool Places::isRenumbered(const ProjectRecord& record, const SystemUniqueFileID& found) {
    const auto recorded = SystemUniqueFileID::fromString(record.sufid);
    if (!recorded.valid || record.filepath.isEmpty() || recorded.inode != found.inode ||
        recorded.device == found.device)
        return false;
    return RemoteCalls::run(
               record.filepath,
               [path = record.path(), found] { return folderAbove(path).device == found.device; })
        .value_or(false);
}

} // namespace Stemhaven
