#pragma once

#include "project/ProjectInformation.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

/// Looks at the parts of a bundle that recovery relies on. Nothing is written, and a folder that is a link
/// counts as none. What is there but cannot be looked at (no permission, a failing disk, too many open files)
/// throws IOException, so that it never passes for damage. Any thread.
namespace Stemhaven::BundleInspection {

/// Whether there is a folder at path.
bool isFolder(const QString& path);

/// The folders in a folder whose names are integers from 0 to greatest, sorted by name.
QStringList numberedFolders(const QString& folder, int greatest);

/// What a bundle's information file says. Nothing where the file is missing or damaged; the latter is logged.
std::optional<ProjectInformation> readInformation(const QString& bundlePath);

enum class Links { Follow, Refuse };

/// When the list of a snapshot was modified, where the folder is a complete snapshot: it holds a
/// "MetaData.plist" and a "ProjectData", none of them empty.
std::optional<QDateTime> completeSnapshot(const QString& folder, Links links);

} // namespace Stemhaven::BundleInspection
