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
    /// Of the record that is this bundle's for good.
    std::optional<std::int64_t> recordId;
    std::optional<UserData> userData;

    bool isUntitled() const;
};

/// What must stand on disk after all that was done: folders and bundles, below two roots that the program
/// follows and beside them. Bundles that were deleted stay known.
class LibraryModel {
public:
    using Path = std::filesystem::path;

    explicit LibraryModel(const Path& base);

    const std::vector<Path>& roots() const { return m_roots; }

    const Path& outside() const { return m_outside; }

    /// The folders below the roots, without the roots.
    std::vector<Path> folders() const;

    std::deque<Bundle>& bundles() { return m_bundles; }

    const std::deque<Bundle>& bundles() const { return m_bundles; }

    bool isBelowRoots(const Path& path) const;
    /// Whether the catalogue must have a record of it as it stands.
    bool isListed(const Bundle& bundle) const;
    /// Existing bundles at or below a path.
    std::vector<Bundle*> bundlesIn(const Path& path);

    void addFolder(const Path& path) { m_folders.insert(path); }

    Bundle& addBundle(const Path& path, double tempo);
    /// A bundle, or a folder with all that it holds.
    void relocate(const Path& from, const Path& to);
    void remove(const Path& path);

    /// The catalogue has followed all that was done so far.
    void settled();

private:
    std::vector<Path> m_roots;
    Path m_outside;
    std::set<Path> m_folders;
    std::deque<Bundle> m_bundles;
};

} // namespace Storm
