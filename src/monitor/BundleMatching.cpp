#include "monitor/BundleMatching.h"

#include "app/errors/Guarded.h"
#include "platform/RemoteCalls.h"
#include "project/BundleSuffixes.h"
#include "project/NoteFile.h"

#include <QCoreApplication>
#include <QDebug>

#include <algorithm>
#include <utility>

namespace Stemhaven {

namespace {

constexpr qint64 nanosecondsPerSecond = 1'000'000'000;

constexpr const char* skippedNew = "Skipping... Could not read project data for new project: ";
constexpr const char* skippedKnown = "Skipping... Could not read project data for project: ";

/// There are disks that take a name in other letters for the same.
bool isSameOnSomeDisks(const QString& a, const QString& b) {
    const auto folded = [](const QString& text) {
        return text.normalized(QString::NormalizationForm_C).toCaseFolded();
    };
    return a == b || folded(a) == folded(b);
}

/// As a project is called before its first save.
bool isUntitled(const QString& name) {
    return name.startsWith(QCoreApplication::translate("Stemhaven::ProjectMonitor", "Untitled"));
}

/// Whether the record's bundle is where the record says.
bool isInPlace(const ProjectRecord& record) {
    const auto recorded = SystemUniqueFileID::fromString(record.sufid);
    return recorded.valid && Places::bundleAt(record.path()) == recorded;
}

bool isSameSave(const FoundBundle& bundle, const ProjectRecord& record) {
    return bundle.savedAt != 0 && bundle.savedAt == record.lastModified;
}

/// Whether what stands where the record says may be another song: its own can have moved to another volume,
/// where it got another identity. What was put back there has the record's last save or its note.
bool isReplaced(const ProjectRecord& record) {
    const QString path = record.path();
    const auto there = RemoteCalls::run(path, [path] { return FoundBundle::read(path); });
    if (!there || !there->isThere() || there->noteFailure || isSameSave(*there, record))
        return false;
    return there->details.sufid.toString() != record.sufid &&
        (!there->note || there->note->first != record.id);
}

/// Whether another catalogue wrote the note, so that the id in it means another song. Otherwise the record
/// with that id has or had the identity that the note names, however old the backup that it comes from; or,
/// where the catalogue itself is an older copy, the bundle was last saved when the record says.
bool isForeign(
    const RecordCandidates::Note& note, const FoundBundle& bundle, const RecordCandidates& candidates) {
    if (!candidates.byNotedId || isSameSave(bundle, *candidates.byNotedId))
        return false;
    const auto noted = SystemUniqueFileID::fromString(QString::fromStdString(note.second));
    const auto isNoted = [&](const QString& sufid) {
        const auto recorded = SystemUniqueFileID::fromString(sufid);
        // The number of a device can change from one start of the machine to the next.
        return noted.valid && recorded.valid && noted.inode == recorded.inode;
    };
    const auto& former = candidates.formerOfNotedId;
    return !isNoted(candidates.byNotedId->sufid) && std::none_of(former.begin(), former.end(), isNoted);
}

} // namespace

BundleMatching::BundleMatching(Places places, std::function<bool(const QString&)> isSearched)
    : m_places(std::move(places)),
      m_isSearched(std::move(isSearched)) {}

BundleMatching::Outcome BundleMatching::match(
    const FoundBundle& bundle, const RecordCandidates& candidates, const QStringList& priorPaths,
    Knowledge knowledge) {
    Subject subject{bundle,
                    candidates,
                    priorPaths,
                    bundle.note,
                    bundle.details.bundlePath(),
                    bundle.details.sufid.toString()};
    if (bundle.note && isForeign(*bundle.note, bundle, candidates)) {
        qDebug() << "The note of another catalogue is passed over:" << subject.path;
        subject.note.reset();
    }
    if (const auto record = certainRecord(subject))
        return update(subject, *record);
    if (bundle.noteFailure)
        return unreadable(skippedNew, subject.path, bundle.noteFailure);
    const auto atItsPath = atPath(subject);
    if (atItsPath.isEmpty() && !subject.note)
        return insert(subject);
    if (knowledge == Knowledge::Partial)
        return Outcome::Undecided;
    const auto origin = originByNote(subject);
    // Exchanged with another one by a sync client or between volumes, which make new folders.
    const bool hasCome = origin && !origin->isAway && !isInPlace(origin->record) &&
        origin->record.sufid.toStdString() == subject.note->second;
    // Put back by a sync client or a backup, or replaced by a document program.
    if (!atItsPath.isEmpty()) {
        if (knowledge == Knowledge::Settled)
            return update(subject, hasCome ? origin->record : atItsPath.first());
        return hasCome ? Outcome::Undecided : Outcome::UndecidedByPath;
    }
    if (!origin)
        return insert(subject);
    if (origin->isAway) {
        qInfo() << "The place of a recorded project is missing. What was found elsewhere gets a record of "
                   "its own with the same user data. project_id:"
                << origin->record.id;
        return insert(subject, origin->record.id);
    }
    const auto nowThere = Places::bundleAt(origin->record.path());
    if (!nowThere || (nowThere->valid && *nowThere != bundle.details.sufid)) {
        qDebug() << "Previous project found with matching SUFID with project_id: " << origin->record.id;
        qDebug() << "Copy of project will be added as a new record.";
        m_originals.insert(subject.sufid, origin->record.id);
        // The path keeps the record, but the song itself may be the one that was found elsewhere.
        return hasCome && isReplaced(origin->record) ? insert(subject, origin->record.id) : insert(subject);
    }
    return knowledge == Knowledge::Settled ? update(subject, origin->record) : Outcome::Undecided;
}

std::optional<ProjectRecord> BundleMatching::certainRecord(const Subject& subject) const {
    const auto records = withIdentity(subject);
    const auto& note = subject.note;
    const auto firstThat = [&](const auto& confirms) -> std::optional<ProjectRecord> {
        const auto found = std::find_if(records.begin(), records.end(), confirms);
        return found == records.end() ? std::nullopt : std::optional(*found);
    };
    if (const auto record = firstThat([&](const auto& it) { return it.path() == subject.path; }))
        return record;
    if (const auto record = firstThat([&](const auto& it) { return isAlsoAt(subject, it.path()); }))
        return record;
    if (const auto record = movedRecord(subject))
        return record;
    if (const auto record = firstThat(
            [&](const auto& it) { return note && note->first == it.id && mayHaveCome(subject, it); }))
        return record;
    if (note && subject.candidates.byNotedId) {
        const auto noted = current(*subject.candidates.byNotedId);
        if (noted.sufid.toStdString() == note->second &&
            Places::isRenumbered(noted, subject.bundle.details.sufid) && mayHaveCome(subject, noted))
            return noted;
    }
    const bool isIdentityNoted =
        note && !subject.candidates.byNotedId && note->second == subject.sufid.toStdString();
    if (isIdentityNoted)
        return firstThat([&](const auto& it) { return mayHaveCome(subject, it); });
    // A note that could not be written anew still names the record of what the bundle was copied from.
    if (note && subject.candidates.byNotedId) {
        const auto noted = current(*subject.candidates.byNotedId);
        if (isSameSave(subject.bundle, noted) && !isInPlace(noted))
            return std::nullopt;
    }
    // New bundles have no note either, and two of them can be saved within a second.
    const bool mayBeNew = !records.isEmpty() && !subject.bundle.note && !subject.bundle.noteFailure &&
        RemoteCalls::run(subject.path, [path = subject.path] { return lacksNote(path); }).value_or(true);
    return firstThat([&](const auto& it) {
        return isSameSave(subject.bundle, it) &&
            (!mayBeNew || it.filename == subject.bundle.details.filename);
    });
}

/// The record of a path from which the bundle was seen to move, unless that record is another bundle's. What
/// moved out of sight and was deleted there may have left its number to what comes next.
std::optional<ProjectRecord> BundleMatching::movedRecord(const Subject& subject) const {
    auto records = withIdentity(subject);
    records.removeIf([&](const ProjectRecord& record) {
        const bool isNoted = subject.note && subject.note->first == record.id;
        return !isNoted && !subject.bundle.noteFailure && !isSameSave(subject.bundle, record);
    });
    const auto isAmong = [&](const ProjectRecord& record) {
        return std::any_of(
            records.begin(), records.end(), [&](const auto& it) { return it.id == record.id; });
    };
    for (const auto& prior : subject.candidates.byPriorPath) {
        const auto record = current(prior);
        const bool isStillThere = subject.priorPaths.contains(record.path());
        if (isStillThere && (isAmong(record) || (record.sufid.isEmpty() && records.isEmpty())))
            return record;
    }
    // Another bundle came to its path before this one was looked at.
    const auto gaveUpPlace = std::find_if(records.begin(), records.end(), [&](const ProjectRecord& record) {
        return record.filepath.isEmpty() &&
            std::any_of(subject.priorPaths.begin(), subject.priorPaths.end(), [&](const QString& prior) {
                   return prior.endsWith(QLatin1Char('/') + record.filename);
               });
    });
    return gaveUpPlace == records.end() ? std::nullopt : std::optional(*gaveUpPlace);
}

/// The record that the bundle's note speaks for, and whether its bundle cannot be looked for now.
std::optional<BundleMatching::Origin> BundleMatching::originByNote(const Subject& subject) const {
    if (!subject.note)
        return std::nullopt;
    std::optional<ProjectRecord> origin = subject.candidates.byNotedId;
    if (origin) {
        qDebug() << "Found project_id match from Stemhaven.plist: " << origin->id;
    } else if (!subject.candidates.byNotedIdentity.isEmpty()) {
        // The identity may have gone to another record meanwhile.
        origin = current(subject.candidates.byNotedIdentity.first());
        if (origin->sufid.toStdString() != subject.note->second)
            return std::nullopt;
    }
    if (!origin)
        return std::nullopt;
    const auto record = current(*origin);
    if (bundlePathIn(record.path()).isEmpty()) {
        qWarning() << "Old project details are invalid! Possibly corrupt or incorrect path information.";
        qDebug() << "\tOld project_id: " << record.id << " oldFilepath: " << record.filepath
                 << " oldFilename: " << record.filename;
        qWarning()
            << "Since it is corrupted it is unusable. Replacing with newly found project with matching SFUID";
        qDebug() << "\t" << subject.bundle.details;
    }
    return Origin{record, isAway(subject, record)};
}

/// Devices are numbered anew, and so are the folders of each volume: where the record's volume is missing, a
/// number and a note prove nothing without the last save.
bool BundleMatching::mayHaveCome(const Subject& subject, const ProjectRecord& record) const {
    return isSameSave(subject.bundle, record) || !isAway(subject, record);
}

bool BundleMatching::isAway(const Subject& subject, const ProjectRecord& record) const {
    const bool mayBeRenumbered = isSameSave(subject.bundle, record);
    return m_places.isAway(record, mayBeRenumbered ? subject.bundle.details.sufid : SystemUniqueFileID());
}

/// Whether the bundle is found at that path as well, as when one root is a link to another. Its record keeps
/// the path that it has then, or each look at one of the roots would move it there.
bool BundleMatching::isAlsoAt(const Subject& subject, const QString& path) const {
    return !isSameOnSomeDisks(path, subject.path) && m_isSearched(path) &&
        Places::bundleAt(path) == subject.bundle.details.sufid;
}

ProjectRecord BundleMatching::current(const ProjectRecord& record) const {
    return m_decided.value(record.id, record);
}

QList<ProjectRecord> BundleMatching::withIdentity(const Subject& subject) const {
    QList<ProjectRecord> records;
    for (const auto& candidate : subject.candidates.byIdentity) {
        if (const auto record = current(candidate); record.sufid == subject.sufid)
            records.append(record);
    }
    return records;
}

QList<ProjectRecord> BundleMatching::atPath(const Subject& subject) const {
    QList<ProjectRecord> records;
    for (const auto& candidate : subject.candidates.byPath) {
        if (const auto record = current(candidate); record.path() == subject.path)
            records.append(record);
    }
    return records;
}

BundleMatching::Outcome BundleMatching::update(const Subject& subject, const ProjectRecord& record) {
    const bool keepsPath = isAlsoAt(subject, record.path());
    const auto details = keepsPath ? ProjectDetails(record.path()) : subject.bundle.details;
    const auto path = details.bundlePath();
    const bool isMoved = record.path() != path || record.sufid != subject.sufid;
    qDebug() << "Project modified. project id:" << record.id << " SUFID:" << details;
    Outcome outcome = Outcome::Decided;
    std::exception_ptr failure = subject.bundle.dataFailure;
    if (!failure) {
        try {
            m_changes.updateProject(
                details, *subject.bundle.data, subject.bundle.readAt / nanosecondsPerSecond, record.id);
        } catch (...) {
            failure = std::current_exception();
        }
    }
    if (failure) {
        outcome = unreadable(skippedKnown, subject.path, failure);
        if (!isMoved)
            return outcome;
        m_changes.moveProject(details, record.id);
    }
    takeOver(subject, record.id, path);
    if (record.path() != path) {
        m_vacatedPaths.append(record.path());
        qInfo() << "Project was moved/renamed!"
                << "\t From:" << record.path() << "\t To:  " << details;
    }
    m_decided[record.id] = {
        record.id, details.filepath, details.filename, subject.sufid, subject.bundle.savedAt};
    return outcome;
}

BundleMatching::Outcome
BundleMatching::insert(const Subject& subject, std::optional<long long> sameUserDataAs) {
    if (isUntitled(subject.bundle.details.name))
        return Outcome::Decided;
    std::exception_ptr failure = subject.bundle.dataFailure;
    if (!failure) {
        try {
            m_changes.addProject(
                subject.bundle.details, *subject.bundle.data, subject.bundle.readAt / nanosecondsPerSecond,
                sameUserDataAs);
        } catch (...) {
            failure = std::current_exception();
        }
    }
    if (failure)
        return unreadable(skippedNew, subject.path, failure);
    takeOver(subject, 0, subject.path);
    return Outcome::Decided;
}

/// Takes the bundle's identity and path from all other records.
void BundleMatching::takeOver(const Subject& subject, long long projectId, const QString& path) {
    for (auto record : withIdentity(subject)) {
        if (record.id == projectId)
            continue;
        if (projectId != 0)
            m_duplicates.append({subject.bundle.details.name, projectId, record.id});
        qInfo() << "Another bundle has the identity of a recorded project now. project_id:" << record.id;
        m_changes.giveUpIdentity(record.id);
        record.sufid.clear();
        m_decided[record.id] = record;
    }
    for (auto record : atPath(subject)) {
        if (record.id == projectId || record.path() != path)
            continue;
        qInfo() << "Another bundle has the place of a recorded project now. project_id:" << record.id;
        m_changes.giveUpPlace(record.id);
        record.filepath.clear();
        m_decided[record.id] = record;
    }
}

BundleMatching::Outcome
BundleMatching::unreadable(const char* what, const QString& path, const std::exception_ptr& failure) {
    loggingFailures(QLatin1String(what) + path, [&] { std::rethrow_exception(failure); });
    return Outcome::Unreadable;
}

} // namespace Stemhaven
