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

} // namespace Stemhaven
