#include "Checker.h"

#include "BundleFiles.h"
#include "project/NoteFile.h"
#include "project/ProjectDetails.h"

#include <QString>

#include <exception>
#include <utility>

namespace Storm {

namespace {

std::string text(std::int64_t number) {
    return std::to_string(number);
}

std::string text(const UserData& data) {
    return std::to_string(data.stars) + " stars, \"" + data.notes + "\", \"" + data.genre + "\", \"" +
        data.tag + "\" and \"" + data.collection + "\"";
}

} // namespace

std::vector<std::string>
Checker::complaints(const LibraryModel& library, const std::vector<Record>& records) {
    m_complaints.clear();
    m_byPath.clear();
    m_bySufid.clear();
    m_byId.clear();
    m_tagByOwnedId.clear();
    m_idByTag.clear();
    for (const auto& record : records) {
        m_byPath.emplace(record.path, record);
        m_bySufid.emplace(record.sufid, record);
        m_byId[record.id] = record;
    }
    for (const auto& bundle : library.bundles()) {
        if (bundle.recordId)
            m_tagByOwnedId[*bundle.recordId] = bundle.tag;
    }

    checkPaths();
    for (const auto& bundle : library.bundles()) {
        if (library.isListed(bundle))
            checkListed(bundle);
        else if (bundle.exists && bundle.isUntitled() && m_byPath.count(bundle.path) != 0)
            complain(bundle, "has a record though it is untitled");
    }
    checkUserData(library);
    for (const auto id : m_idsEver) {
        if (m_byId.count(id) == 0)
            m_complaints.push_back("record " + text(id) + " is gone");
    }
    return std::move(m_complaints);
}

void Checker::checkPaths() {
    std::set<std::string> claimed;
    for (const auto& [path, record] : m_byPath) {
        // What has given its identity up is what a bundle left that moved on before it had its note.
        if (!record.sufid.empty() && !claimed.insert(path).second)
            m_complaints.push_back("record " + text(record.id) + " is not the only one at " + path);
        if (std::filesystem::path(path).filename().string().starts_with('.'))
            m_complaints.push_back("record " + text(record.id) + " is of hidden " + path);
    }
}

void Checker::checkListed(const Bundle& bundle) {
    const Stemhaven::ProjectDetails details(QString::fromStdString(bundle.path.string()));
    const std::string sufid = details.sufid.toString().toStdString();
    const auto* record = findRecord(bundle, sufid);
    if (record == nullptr)
        return;
    m_idByTag[bundle.tag] = record->id;
    if (record->tempo != bundle.tempo)
        complain(
            bundle,
            "has tempo " + std::to_string(record->tempo) + " instead of " + std::to_string(bundle.tempo));
    if (bundle.recordId && *bundle.recordId != record->id)
        complain(bundle, "has record " + text(record->id) + " instead of its " + text(*bundle.recordId));
    const auto owner = m_tagByOwnedId.find(record->id);
    if (owner != m_tagByOwnedId.end() && owner->second != bundle.tag)
        complain(
            bundle, "has record " + text(record->id) + ", which is #" + std::to_string(owner->second) + "'s");
    checkNote(bundle, *record);
}

void Checker::checkNote(const Bundle& bundle, const Record& record) {
    const Stemhaven::ProjectDetails details(QString::fromStdString(bundle.path.string()));
    try {
        const auto note = Stemhaven::loadStemhavenPlistDetails(details);
        if (!note)
            complain(bundle, "has no note");
        else if (note->first != record.id || note->second != record.sufid)
            complain(
                bundle,
                "has a note for record " + text(note->first) + " and identity " + note->second +
                    " instead of " + text(record.id) + " and " + record.sufid);
    } catch (const std::exception& error) {
        complain(bundle, std::string("has an unreadable note: ") + error.what());
    }
}

const Record* Checker::findRecord(const Bundle& bundle, const std::string& sufid) {
    const Record* found = nullptr;
    const auto [begin, end] = m_bySufid.equal_range(sufid);
    for (auto at = begin; at != end; ++at) {
        if (at->second.path == bundle.path && found == nullptr)
            found = &at->second;
        else
            complain(bundle, "has the identity of record " + text(at->second.id) + " at " + at->second.path);
    }
    if (found == nullptr)
        complain(bundle, "has no record with its path and identity " + sufid);
    return found;
}

void Checker::checkUserData(const LibraryModel& library) {
    std::map<std::int64_t, UserData> expected;
    for (const auto& bundle : library.bundles()) {
        const auto id = m_idByTag.find(bundle.tag);
        if (bundle.userData && bundle.recordId)
            expected[*bundle.recordId] = *bundle.userData;
        else if (bundle.userData && id != m_idByTag.end())
            expected[id->second] = *bundle.userData;
    }
    for (const auto& [id, record] : m_byId) {
        if (record.userData != expected[id])
            m_complaints.push_back(
                "record " + text(id) + " has " + text(record.userData) + " instead of " + text(expected[id]));
    }
}

void Checker::complain(const Bundle& bundle, const std::string& what) {
    m_complaints.push_back("#" + std::to_string(bundle.tag) + " " + bundle.path.string() + " " + what);
}

void Checker::adopt(LibraryModel& library) {
    for (const auto& [id, record] : m_byId)
        m_idsEver.insert(id);
    for (auto& bundle : library.bundles()) {
        const auto id = m_idByTag.find(bundle.tag);
        if (id != m_idByTag.end())
            bundle.recordId = id->second;
    }
    library.settled();
}

} // namespace Storm
