#pragma once

#include <QString>
#include <QStringList>

namespace Stemhaven {

/// What the names of project bundles end in, dot included. Every test for a bundle goes through this list.
const QStringList& bundleSuffixes();

/// Whether path names a project bundle or something inside one: a suffix occurs anywhere in it,
/// case-sensitively. extension is set to the first such suffix and left alone when there is none.
bool isLogicProjectAssetPath(const QString& path, QString& extension);

/// Whether path ends in a suffix.
bool isBundlePath(const QString& path);

/// The path of the outermost bundle that path is or lies in: up to and with the first component that ends in
/// a suffix. Empty when there is none, as for "A.logicx backups", which merely holds a suffix.
QString bundlePathIn(const QString& path);

} // namespace Stemhaven
