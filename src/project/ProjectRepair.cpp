#include "project/ProjectRepair.h"

#include "app/errors/IOException.h"
#include "plist/PropertyList.h"
#include "project/BundleInspection.h"
#include "project/ProjectDetails.h"
#include "project/RepairedFile.h"

#include <QDebug>
#include <QFile>

#include <sys/stat.h>

namespace Stemhaven {

namespace {

constexpr const char* metaDataName = "MetaData.plist";
constexpr const char* projectDataName = "ProjectData";
constexpr const char* informationName = "ProjectInformation.plist";
constexpr const char* resourcesName = "Resources";

std::string encoded(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

} // namespace

/// One of the two files that are copied from a backup, with the texts for it.
class ProjectRepair::RestoredFile {
public:
    struct Texts {
        const char* name;
        /// As the log calls the file in this place.
        const char* shortName;
        const char* restoredName;
        const char* otherName;
    };

    RestoredFile(const ProjectRepair& repair, const OpenFolder& backup, const Texts& texts)
        : m_repair(repair),
          m_backup(backup),
          m_texts(texts),
          m_file(repair.m_alternative, texts.name) {}

    void copy() {
        if (!m_file.isIn(m_backup))
            fail("Could not recover project from backup! Backup %1 not found!", m_texts.shortName);
        if (!m_file.copyFrom(m_backup))
            failCopy();
        m_repair.done("copied");
    }

    void setAside() {
        const bool isReplacing = m_file.isReplacing();
        if (!m_file.setAside())
            fail("Could not remove old, empty, or corrupt %1! Recovery failed...", m_texts.name);
        if (isReplacing)
            qInfo().noquote() << QStringLiteral(
                                     "Old %1 found which may be corrupt, empty, or mismatched with %2. "
                                     "Deleted. Replacing...")
                                     .arg(QLatin1String(m_texts.name), QLatin1String(m_texts.otherName));
        m_repair.done("set aside");
    }

    void putInPlace() {
        if (!m_file.putInPlace())
            failCopy();
        qInfo().nospace() << m_texts.restoredName << " successfully restored from backup: "
                          << m_repair.alternativePath() + u'/' + QLatin1String(m_texts.name);
        m_repair.done("in place");
    }

    /// Whether the file that is to be replaced looks healthy to the search, which reads through links.
    bool isReplacingWhole() const {
        struct stat status = {};
        return fstatat(m_repair.m_alternative.descriptor(), m_texts.name, &status, 0) == 0 &&
            S_ISREG(status.st_mode) && status.st_size > 0;
    }

private:
    [[noreturn]] static void fail(const char* text, const char* file) {
        throw IOException(QString::fromLatin1(text).arg(QLatin1String(file)));
    }

    [[noreturn]] void failCopy() const {
        fail("Could not recover project from backup. %1 copy failed...", m_texts.shortName);
    }

    const ProjectRepair& m_repair;
    const OpenFolder& m_backup;
    const Texts m_texts;
    RepairedFile m_file;
};

ProjectRepair::ProjectRepair(
    const RecoverableProject& project, const RecoverableProject::StepObserver& afterStep)
    : m_project(project),
      m_afterStep(afterStep),
      m_bundle(encoded(project.path)),
      m_alternative(OpenFolder(m_bundle, "Alternatives"), encoded(project.alternativeName).c_str()) {}

bool ProjectRepair::run() {
    qDebug() << "Beginning project recovery for: " << m_project.path;
    using BundleInspection::Links;
    // Much can happen between the search and the repair: a save, or a file that a sync client brings.
    if (m_project.needsRestore() && !BundleInspection::completeSnapshot(alternativePath(), Links::Follow))
        restore();
    if (m_project.needsInformation() && !BundleInspection::readInformation(m_project.path) &&
        !writeInformation())
        return false;
    removeDamaged();
    return true;
}

QString ProjectRepair::alternativePath() const {
    return m_project.path + QStringLiteral("/Alternatives/") + m_project.alternativeName;
}

void ProjectRepair::restore() {
    constexpr const char* backupsName = "Project File Backups";
    qInfo() << "Restoring project data from backup: " << m_project.path;
    qInfo() << "\tAlternative: " << alternativePath();
    qInfo() << "\tAuto-Backup: "
            << alternativePath() + u'/' + QLatin1String(backupsName) + u'/' + m_project.backupName;

    const OpenFolder backup(OpenFolder(m_alternative, backupsName), encoded(m_project.backupName).c_str());
    RestoredFile metaData(*this, backup, {metaDataName, "MetaData", "Metadata", projectDataName});
    RestoredFile projectData(*this, backup, {projectDataName, projectDataName, projectDataName, "MetaData"});
    // A file that looks healthy is replaced first, so that between the two the alternative always lacks one:
    // the new one of a pair and the old other one would pass for a complete alternative.
    const bool isDataFirst = projectData.isReplacingWhole();
    metaData.copy();
    metaData.setAside();
    if (!isDataFirst)
        metaData.putInPlace();
    projectData.copy();
    projectData.setAside();
    projectData.putInPlace();
    if (isDataFirst)
        metaData.putInPlace();
}

Plist::Dictionary ProjectRepair::information() const {
    bool isNumber = false;
    const int active = m_project.alternativeName.toInt(&isNumber);
    if (!isNumber)
        throw Exception(QStringLiteral("Could not recover project from backup. Invalid alternative name."));

    const std::string name = ProjectDetails(m_project.path).name.toStdString();
    const std::string placeholder = "{PROJECT_NAME}";
    Plist::Dictionary names{{"0", name}};
    Plist::Dictionary namesV2{{"0", placeholder}};
    for (const int number : m_project.alternativeNumbers) {
        const std::string key = std::to_string(number);
        const std::string ending = '-' + key;
        // The first alternative is there already.
        names.try_emplace(key, name + ending);
        namesV2.try_emplace(key, placeholder + ending);
    }
    return {
        {"StemhavenNote",
         std::string(
             "Genereted by Stemhaven to recover project. Warning: Values are based on observations and are "
             "not guarenteed correct.")},
        {"ActiveVariant", std::int64_t{active}},
        {"HasProjectFolder", false},
        {"LastSavedFrom", std::string("Logic Pro X 10.8 (5895)")},
        {"BundleVersion", std::int64_t{2}},
        {"VariantNames", std::move(names)},
        {"VariantNamesV2", std::move(namesV2)},
    };
}

bool ProjectRepair::writeInformation() {
    std::vector<char> bytes;
    Plist::writePlistBinary(bytes, information());
    qDebug() << "Creating new ProjectInformation.plist for project recovery:"
             << informationPath(m_project.path);
    constexpr mode_t everyone = 0777;
    mkdirat(m_bundle.descriptor(), resourcesName, everyone);
    const OpenFolder resources(m_bundle, resourcesName);
    RepairedFile file(resources, informationName);
    const bool isReplacing = file.isReplacing();
    if (!file.isWritable()) {
        if (isReplacing)
            qWarning() << "Could not delete unreadable ProjectInformation.plist!";
        return false;
    }
    if (!file.write({bytes.data(), bytes.size()}))
        throw IOException(QStringLiteral("Could not write ProjectInformation.plist."));
    done("written");
    if (!file.setAside()) {
        qWarning() << "Could not delete unreadable ProjectInformation.plist!";
        return false;
    }
    if (isReplacing)
        qInfo() << "Deleted old unreadable/corrupted ProjectInformation.plist.";
    done("set aside");
    if (!file.putInPlace())
        throw IOException(QStringLiteral("Could not write ProjectInformation.plist."));
    done("in place");
    return true;
}

void ProjectRepair::removeDamaged() {
    for (const char* name : {metaDataName, projectDataName}) {
        RepairedFile::removeDamaged(m_alternative, name);
        done("removed");
    }
    RepairedFile::removeDamaged(OpenFolder(m_bundle, resourcesName), informationName);
    done("removed");
}

void ProjectRepair::done(const char* step) const {
    if (m_afterStep)
        m_afterStep(step);
}

} // namespace Stemhaven
