#include "project/NoteFile.h"

#include "platform/DecodingTurn.h"
#include "platform/FileReplacement.h"
#include "platform/OpenFolder.h"
#include "platform/PlainFile.h"
#include "plist/PropertyList.h"

#include <QDebug>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace Stemhaven {

namespace {

constexpr const char* noteName = "Stemhaven.plist";
constexpr const char* projectIdKey = "project_id";
constexpr const char* sufidKey = "SUFID";
constexpr off_t maxNoteSize = 4 << 20;
/// Two numbers and what is between them. The texts of many notes are held at once.
constexpr std::size_t maxSufidSize = 64;
/// Each note that is written holds two descriptors open, of which a process may have only 256 on some
/// systems.
constexpr std::size_t mostAtOnce = 64;

/// In the file system's encoding, as are all paths here.
std::string encoded(const QString& bundlePath) {
    return QFile::encodeName(bundlePath).toStdString();
}

std::string notePath(const QString& bundlePath) {
    return encoded(bundlePath) + "/Resources/" + noteName;
}

OpenFolder resourcesOf(const OpenFolder& bundle) {
    return {bundle, "Resources"};
}

bool isUsable(const struct stat& status) {
    return S_ISREG(status.st_mode) && status.st_size > 0 && status.st_size <= maxNoteSize;
}

bool holdsNote(const OpenFolder& resources) {
    struct stat status = {};
    return fstatat(resources.descriptor(), noteName, &status, AT_SYMLINK_NOFOLLOW) == 0 && isUsable(status);
}

std::vector<char> noteFor(const NoteToWrite& note) {
    std::vector<char> bytes;
    Plist::writePlistBinary(
        bytes,
        Plist::Dictionary{
            {projectIdKey, note.projectId}, {sufidKey, note.details.sufid.toString().toStdString()}});
    return bytes;
}

/// Notes that are written but not in their places yet.
struct PendingNotes {
    std::vector<OpenFolder> folders;
    std::vector<FileReplacement> files;
};

/// Adds nothing where there is no need for a new note, or no way.
void write(const NoteToWrite& note, PendingNotes& pending) {
    if (!note.details.sufid.valid) {
        qWarning() << "Could not update Stemhaven.plist. SUFID invalid.";
        return;
    }
    const OpenFolder bundle(encoded(note.details.bundlePath()));
    // Another bundle may have come to the path since it was looked at, and a wrong note costs it its record.
    if (SystemUniqueFileID::of(bundle.descriptor()) != note.details.sufid)
        return;
    OpenFolder resources = resourcesOf(bundle);
    const std::vector<char> bytes = noteFor(note);
    const std::string_view text(bytes.data(), bytes.size());
    // Most notes stand as they are. Writing them again would be another change of the bundle for everyone who
    // watches it, and a flush to the disk for each. A bundle that cannot be written, on a read-only volume
    // say, goes without a note.
    const auto standing = readPlainFile(resources, noteName, static_cast<qint64>(text.size()));
    if (standing &&
        std::string_view(standing->constData(), static_cast<std::size_t>(standing->size())) == text)
        return;
    FileReplacement file(resources, noteName);
    if (!file.write(text))
        return;
    pending.folders.push_back(std::move(resources));
    pending.files.push_back(std::move(file));
}

void writeGroup(const NoteToWrite* begin, const NoteToWrite* end) {
    PendingNotes pending;
    for (const auto* note = begin; note != end; ++note)
        write(*note, pending);
    FileReplacement::putInPlace(pending.files);
}

} // namespace

void writeNotes(const std::vector<NoteToWrite>& notes) {
    for (std::size_t begin = 0; begin < notes.size(); begin += mostAtOnce)
        writeGroup(notes.data() + begin, notes.data() + std::min(begin + mostAtOnce, notes.size()));
}

void updateStemhavenPlist(const ProjectDetails& details, std::int64_t projectId) {
    writeNotes({{details, projectId}});
}

std::optional<std::string> hasStemhavenPlist(const ProjectDetails& details) {
    if (!details.isValid || !details.sufid.valid)
        return std::nullopt;
    const OpenFolder bundle(encoded(details.bundlePath()));
    if (!holdsNote(resourcesOf(bundle)))
        return std::nullopt;
    return notePath(details.bundlePath());
}

bool lacksNote(const QString& bundlePath) {
    struct stat status = {};
    const bool isThere = lstat(notePath(bundlePath).c_str(), &status) == 0;
    // What is there, and is no note, gives way to one unless it is a folder.
    if (isThere ? isUsable(status) || S_ISDIR(status.st_mode) : errno != ENOENT)
        return false;
    const OpenFolder bundle(encoded(bundlePath));
    const OpenFolder resources = resourcesOf(bundle);
    return resources.isOpen() && faccessat(resources.descriptor(), ".", W_OK, 0) == 0;
}

std::optional<std::pair<std::int64_t, std::string>> loadStemhavenPlistDetails(const ProjectDetails& details) {
    if (!details.isValid || !details.sufid.valid)
        return std::nullopt;
    const OpenFolder bundle(encoded(details.bundlePath()));
    const OpenFolder resources = resourcesOf(bundle);
    // A bundle whose note could not be looked at must not pass for one without.
    if (!resources.isOpen() && (errno == EMFILE || errno == ENFILE || errno == ENOMEM))
        throw Plist::Error("Can't open file.");
    if (!holdsNote(resources))
        return std::nullopt;
    const auto contents = readPlainFile(resources, noteName, maxNoteSize);
    if (!contents)
        throw Plist::Error("Can't open file.");
    const DecodingTurn turn;
    Plist::Value root;
    Plist::readPlist(contents->constData(), contents->size(), root);
    const auto note = std::any_cast<Plist::Dictionary>(std::move(root));

    const auto projectId = note.find(projectIdKey);
    const auto sufid = note.find(sufidKey);
    if (projectId == note.end() || sufid == note.end()) {
        qWarning() << "Stemhaven.plist found with incorrect format: "
                   << notePath(details.bundlePath()).c_str();
        return std::nullopt;
    }
    const auto* id = std::any_cast<std::int64_t>(&projectId->second);
    const auto* text = std::any_cast<std::string>(&sufid->second);
    if (id == nullptr || text == nullptr || text->size() > maxSufidSize) {
        qCritical() << "Type mismatch in Stemhaven.plist. Bad cast!";
        return std::nullopt;
    }
    return std::pair(*id, *text);
}

} // namespace Stemhaven
