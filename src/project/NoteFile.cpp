#include "project/NoteFile.h"

#include "platform/FileReplacement.h"
#include "plist/PropertyList.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <vector>

namespace Stemhaven {

namespace {

constexpr const char* projectIdKey = "project_id";
constexpr const char* sufidKey = "SUFID";

std::string notePath(const QString& bundlePath) {
    return QFile::encodeName(bundlePath + QStringLiteral("/Resources/Stemhaven.plist")).toStdString();
}

/// Whether a plain file at path, not a link to one, holds exactly these bytes.
bool stands(const std::string& path, const std::vector<char>& bytes) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<std::size_t>(status.st_size) != bytes.size())
        return false;
    std::vector<char> held(bytes.size());
    std::ifstream file(path, std::ios::binary);
    file.read(held.data(), static_cast<std::streamsize>(held.size()));
    return file && held == bytes;
}

} // namespace

void updateStemhavenPlist(const ProjectDetails& details, std::int64_t projectId) {
    if (!details.sufid.valid) {
        qWarning() << "Could not update Stemhaven.plist. SUFID invalid.";
        return;
    }
    // Another bundle may have come to the path since it was looked at, and a wrong note costs it its record.
    if (QFileInfo::exists(details.bundlePath()) &&
        ProjectDetails(details.bundlePath()).sufid != details.sufid)
        return;
    const Plist::Dictionary note{
        {projectIdKey, projectId}, {sufidKey, details.sufid.toString().toStdString()}};
    std::vector<char> bytes;
    Plist::writePlistBinary(bytes, note);
    const std::string path = notePath(details.bundlePath());
    // Most notes stand as they are. Writing them again would be another change of the bundle for everyone who
    // watches it, and a flush to the disk for each. A bundle that cannot be written, on a read-only volume
    // say, goes without a note.
    if (!stands(path, bytes))
        replaceFile(path, {bytes.data(), bytes.size()});
}

std::optional<std::string> hasStemhavenPlist(const ProjectDetails& details) {
    if (!details.isValid || !details.sufid.valid)
        return std::nullopt;
    std::string path = notePath(details.bundlePath());
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return path;
}

bool lacksNote(const QString& bundlePath) {
    const std::string path = notePath(bundlePath);
    struct stat status = {};
    if (lstat(path.c_str(), &status) == 0 || errno != ENOENT)
        return false;
    return access(path.substr(0, path.rfind('/')).c_str(), W_OK) == 0;
}

std::optional<std::pair<std::int64_t, std::string>> loadStemhavenPlistDetails(const ProjectDetails& details) {
    const auto path = hasStemhavenPlist(details);
    if (!path)
        return std::nullopt;
    Plist::Dictionary note;
    Plist::readPlist(path->c_str(), note);

    const auto projectId = note.find(projectIdKey);
    const auto sufid = note.find(sufidKey);
    if (projectId == note.end() || sufid == note.end()) {
        qWarning() << "Stemhaven.plist found with incorrect format: " << path->c_str();
        return std::nullopt;
    }
    const auto* id = std::any_cast<std::int64_t>(&projectId->second);
    const auto* text = std::any_cast<std::string>(&sufid->second);
    if (id == nullptr || text == nullptr) {
        qCritical() << "Type mismatch in Stemhaven.plist. Bad cast!";
        return std::nullopt;
    }
    return std::pair(*id, *text);
}

} // namespace Stemhaven
