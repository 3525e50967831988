#pragma once

#include "Catalogue.h"
#include "LibraryModel.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Storm {

/// Says what the catalogue must hold for a library, whatever was done to it:
/// - each bundle below the roots that is not called Untitled has one record of its own, with its path, its
///   identity and its tempo, and its note names that record;
/// - a record that was a bundle's once stays that bundle's, through every move and restart, and no other
///   bundle gets it, also when the first is deleted;
/// - user data is on the record it was given to and nowhere else, except that the record of a copy whose
///   original's drive was away begins with it;
/// - no two records that have an identity have the same path, nor has a bundle's identity a second record;
/// - what is hidden has no record;
/// - no record is ever deleted.
class Checker {
public:
    /// What is wrong, a line each; empty when nothing is.
    std::vector<std::string> complaints(const LibraryModel& library, const std::vector<Record>& records);

    /// To be called when there was nothing to complain of: from now on the records are their bundles' for
    /// good.
    void adopt(LibraryModel& library);

private:
    void checkPaths();
    void checkListed(const Bundle& bundle);
    void checkNote(const Bundle& bundle, const Record& record);
    const Record* findRecord(const Bundle& bundle, const std::string& sufid);
    void checkUserData(const LibraryModel& library);
    void complain(const Bundle& bundle, const std::string& what);

    std::set<std::int64_t> m_idsEver;
    // Of the latest check.
    std::multimap<std::string, Record> m_byPath;
    std::multimap<std::string, Record> m_bySufid;
    std::map<std::int64_t, Record> m_byId;
    std::map<std::int64_t, int> m_tagByOwnedId;
    std::map<int, std::int64_t> m_idByTag;
    std::vector<std::string> m_complaints;
};

} // namespace Storm
