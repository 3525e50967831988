#pragma once

#include "platform/TreeWalk.h"
#include "plist/PropertyList.h"
#include "project/BundleSuffixes.h"

#include <QDir>
#include <QFile>
#include <QStringList>

/// A project with one alternative, saved again and again with another tempo.
class ProjectSaving {
public:
    /// Reads the project.
    explicit ProjectSaving(const QString& bundle)
        : m_path(QFile::encodeName(bundle + QStringLiteral("/Alternatives/000/MetaData.plist"))) {
        Plist::readPlist(m_path.constData(), m_metaData);
    }

    void save(double tempo) {
        m_metaData["BeatsPerMinute"] = tempo;
        Plist::writePlistBinary(m_path.constData(), m_metaData);
    }

private:
    QByteArray m_path;
    Plist::Dictionary m_metaData;
};

/// The first projects below root that can be saved so.
inline std::vector<ProjectSaving> projectsToSave(const QString& root, std::size_t number) {
    std::vector<ProjectSaving> projects;
    Stemhaven::TreeWalk walk;
    walk.onBundle = [&](const std::string& path) {
        const QString bundle = QFile::decodeName(path.c_str());
        const QDir alternatives(bundle + QStringLiteral("/Alternatives"));
        const bool isSimple =
            alternatives.entryList(QDir::Dirs | QDir::NoDotAndDotDot) == QStringList(QStringLiteral("000"));
        if (isSimple && !bundle.contains(QLatin1String("/Untitled")))
            projects.emplace_back(bundle);
    };
    walk.isStopped = [&] {
        return projects.size() == number;
    };
    walk.walk(QFile::encodeName(root).toStdString(), Stemhaven::BundleNames(Stemhaven::bundleSuffixes()));
    return projects;
}
