#pragma once

#include "project/SystemUniqueFileID.h"

#include <QDebug>
#include <QString>

namespace Stemhaven {

/// What a path says of the project that it lies in or is. Made from the path alone; no file of the bundle is
/// read.
struct ProjectDetails {
    ProjectDetails() = default;
    /// Never throws for a bad path: one outside any bundle gives isValid false and empty texts.
    explicit ProjectDetails(const QString& path);

    /// filepath and filename: the path of the bundle.
    QString bundlePath() const { return filepath + filename; }

    bool isValid = false;
    /// The folder that holds the bundle, with its trailing "/".
    QString filepath;
    /// The bundle's own name with its suffix.
    QString filename;
    /// The bundle's own name without its suffix.
    QString name;
    /// The identity of the path as it was given, also where that lies inside the bundle.
    SystemUniqueFileID sufid;
};

/// Compares the three texts and the identity, not isValid.
bool operator==(const ProjectDetails& a, const ProjectDetails& b);

QDebug operator<<(QDebug debug, const ProjectDetails& details);

} // namespace Stemhaven
