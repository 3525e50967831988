#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Storm {

struct UserData {
    int stars = 0;
    std::string notes;
    std::string genre;
    std::string tag;
    std::string collection;

    bool operator==(const UserData&) const = default;
};

struct Bundle {
    int tag = 0;
    std::filesystem::path path;
    double tempo = 0;
    bool exists = true;
    /// Since the catalogue last followed. Until it does, a copy of the bundle cannot be told from the bundle
    /// itself.
    bool isMoved = false;
    /// Since the catalogue last followed. Were the bundle moved or deleted before the catalogue knows the
    /// copy, the copy would rightly pass for it.
    bool isCopied = false;
    /// Since the catalogue last followed. Were the bundle gone before the catalogue has seen it elsewhere,
    /// its record would rightly stay where another bundle stands now.
    bool isReplaced = false;
    /// Since the catalogue last followed. Without its note and with another identity, only its path says
    /// whose record it has.
    bool isBare = false;
    /// Since the catalogue last followed. Only its note says whose record it has, and that only while the
    /// place where the record says it is can be looked at.
    bool isRestored = false;
    /// Of the record that is this bundle's for good.
    std::optional<std::int64_t> recordId;
    std::optional<UserData> userData;

    bool isUntitled() const;
};

/// What must stand on disk after all that was done: folders and bundles, below the roots that the program
/// follows and beside them. Bundles that were deleted stay known. One of the roots at a time may be away, as
/// a drive that is unplugged.
class LibraryModel {
public:
    using Path = std::filesystem::path;

    explicit LibraryModel(const Path& base);

    /// Those that can be away included.
    const std::vector<Path>& roots() const { return m_roots; }

    std::vector<Path> presentRoots() const;

    const std::optional<Path>& absentRoot() const { return m_absentRoot; }

    /// Where that root is meanwhile.
    const Path& unplugged() const { return m_unplugged; }

    /// A root that the user may take off the list. What is in it has its records all the same.
    const Path& formerRoot() const { return m_formerRoot; }

    /// Bundles that have left the roots and may come back.
    const Path& outside() const { return m_outside; }

    /// Bundles that the model does not know: backups, and what is made ready before it is moved in.
    const Path& store() const { return m_store; }

    /// The folders below the roots, without the roots.
    std::vector<Path> folders() const;

    std::deque<Bundle>& bundles() { return m_bundles; }

    const std::deque<Bundle>& bundles() const { return m_bundles; }

    bool isBelowRoots(const Path& path) const;
    /// Whether the catalogue must have a record of it as it stands.
    bool isListed(const Bundle& bundle) const;
    /// Whether no other bundle has or had this one's name, so that no record of another can stand at its
    /// path.
    bool isOnlyOneOfItsName(const Bundle& bundle) const;
    /// Existing bundles at or below a path.
    std::vector<Bundle*> bundlesIn(const Path& path);

    void addFolder(const Path& path) { m_folders.insert(path); }

    Bundle& addBundle(const Path& path, double tempo);
    /// A bundle, or a folder with all that it holds.
    void relocate(const Path& from, const Path& to);
    void remove(const Path& path);
    void unplug(const Path& root);
    void plugIn();

    /// The catalogue has followed all that was done so far.
    void settled();

private:
    std::vector<Path> m_roots;
    std::optional<Path> m_absentRoot;
    Path m_unplugged;
    Path m_formerRoot;
    Path m_outside;
    Path m_store;
    std::set<Path> m_folders;
    std::deque<Bundle> m_bundles;
};

} // namespace Storm
