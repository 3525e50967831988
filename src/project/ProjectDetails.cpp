#include "project/ProjectDetails.h"

#include "project/BundleSuffixes.h"

namespace Stemhaven {

ProjectDetails::ProjectDetails(const QString& path) : sufid(path.toUtf8().constData()) {
    QString suffix;
    if (!isLogicProjectAssetPath(path, suffix))
        return;

    // The suffix counts where it first occurs, so a folder that has it takes the place of a bundle below it.
    const qsizetype nameEnd = path.indexOf(suffix);
    const qsizetype nameBegin = QStringView(path).left(nameEnd).lastIndexOf(u'/') + 1;
    filepath = path.left(nameBegin);
    name = path.mid(nameBegin, nameEnd - nameBegin);
    filename = name + suffix;
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
