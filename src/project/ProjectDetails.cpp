#include "project/ProjectDetails.h"

#include "project/BundleSuffixes.h"

namespace Stemhaven {

ProjectDetails::ProjectDetails(const QString& path) : sufid(path.toUtf8().constData()) {
    QString suffix;
    if (!isLogicProjectAssetPath(path, suffix))
        return;

    // Where a name merely holds the suffix ("Song.logicx.old") and no component ends in it, the text up to
    // the suffix counts as the bundle.
    QString bundle = bundlePathIn(path);
    if (bundle.isEmpty())
        bundle = path.left(path.indexOf(suffix) + suffix.size());
    const qsizetype nameBegin = bundle.lastIndexOf(u'/') + 1;
    filepath = bundle.left(nameBegin);
    filename = bundle.mid(nameBegin);
    name = filename.chopped(suffix.size());
    isValid = true;
}

bool operator==(const ProjectDetails& a, const ProjectDetails& b) {
    return a.filepath == b.filepath && a.filename == b.filename && a.name == b.name && a.sufid == b.sufid;
}

QDebug operator<<(QDebug debug, const ProjectDetails& details) {
    return debug << "Project details:"
                 << "\tName:     " << details.name << "\tFilename: " << details.filename
                 << "\tFilepath: " << details.filepath << "\tSUFID:    " << details.sufid;
}

} // namespace Stemhaven
