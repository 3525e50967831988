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

} // namespace

std::vector<std::string>
Checker::complaints(const LibraryModel& library, const std::vector<Record>& records) {
    m_complaints.clear();
    m_byPath.clear();
    m_byId.clear();
    m_tagByOwnedId.clear();
    m_idByTag.clear();
    for (const auto& record : records) {
        m_byPath.emplace(record.path, record);
        m_byId[record.id] = record;
    }
    for (const auto& bundle : library.bundles()) {
        if (bundle.recordId)
            m_tagByOwnedId[*bundle.recordId] = bundle.tag;
    }

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

    try {
        const auto note = Stemhaven::loadStemhavenPlistDetails(details);
        if (!note)
            complain(bundle, "has no note");
        else if (note->first != record->id || note->second != sufid)
            complain(
                bundle,
                "has a note for record " + text(note->first) + " and identity " + note->second +
                    " instead of " + text(record->id) + " and " + sufid);
    } catch (const std::exception& error) {
        complain(bundle, std::string("has an unreadable note: ") + error.what());
    }
}

const Record* Checker::findRecord(const Bundle& bundle, const std::string& sufid) {
    const Record* found = nullptr;
    std::string others;
    const auto [begin, end] = m_byPath.equal_range(bundle.path);
    for (auto at = begin; at != end; ++at) {
        const auto& record = at->second;
        // What has given its identity up is what a bundle left that moved on before it had its note.
        if (record.sufid.empty())
            continue;
        if (record.sufid == sufid && found == nullptr)
            found = &record;
        else
            others += " " + text(record.id) + " with identity " + record.sufid;
    }
    if (found == nullptr)
        complain(bundle, "has no record with identity " + sufid + (others.empty() ? "" : " but" + others));
    else if (!others.empty())
        complain(bundle, "has another record beside " + text(found->id) + ":" + others);
    return found;
}

void Checker::checkUserData(const LibraryModel& library) {
    std::map<std::int64_t, UserData> expected;
    for (const auto& bundle : library.bundles()) {
        if (bundle.userData)
            expected[*bundle.recordId] = *bundle.userData;
    }
    for (const auto& [id, record] : m_byId) {
        const auto& data = expected[id];
        if (record.userData.stars != data.stars || record.userData.notes != data.notes)
            m_complaints.push_back(
                "record " + text(id) + " has " + text(record.userData.stars) + " stars and \"" +
                record.userData.notes + "\" instead of " + text(data.stars) + " and \"" + data.notes + "\"");
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
