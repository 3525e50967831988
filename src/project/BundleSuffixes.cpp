#include "project/BundleSuffixes.h"

#include <algorithm>

namespace Stemhaven {

const QStringList& bundleSuffixes() {
    static const QStringList suffixes{QStringLiteral(".logicx")};
    return suffixes;
}

bool isLogicProjectAssetPath(const QString& path, QString& extension) {
    const QStringList& suffixes = bundleSuffixes();
    const auto found = std::find_if(
        suffixes.begin(), suffixes.end(), [&](const QString& suffix) { return path.contains(suffix); });
    if (found == suffixes.end())
        return false;
    extension = *found;
    return true;
}

bool isBundlePath(const QString& path) {
    const QStringList& suffixes = bundleSuffixes();
    return std::any_of(
        suffixes.begin(), suffixes.end(), [&](const QString& suffix) { return path.endsWith(suffix); });
}

QString bundlePathIn(const QString& path) {
    for (qsizetype end = path.indexOf(u'/', 1); end >= 0; end = path.indexOf(u'/', end + 1)) {
        if (const auto folder = path.left(end); isBundlePath(folder))
            return folder;
    }
    return isBundlePath(path) ? path : QString();
}

} // namespace Stemhaven
