#pragma once

#include "LibraryModel.h"
#include "demo-library/Random.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Storm {

/// What people and document programs do to a library. Each operation is done on disk and in the model.
///
/// What the catalogue must make of each is determined, at whatever moment the program sees it, and whether it
/// runs, is stopped or is killed. Where it is not, settle is called first:
/// - a copy of a bundle that was moved may rightly take the record of the bundle, so the move must be known;
/// - so may a copy whose original is gone, so the copy must be known before the original is moved or deleted,
///   and before it leaves the roots itself;
/// - a bundle whose name another took must be known at its new place before it goes from the roots;
/// - a bundle that takes the name of another is told from it by the other's note, which must be written.
/// No new bundle takes the place of a deleted one: it may have its number too, and then is the same project.
class Operations {
public:
    using Path = LibraryModel::Path;

    struct Callbacks {
        /// Returns when the catalogue has followed all that was done.
        std::function<void()> settle;
        std::function<bool()> programIsRunning;
    };

    Operations(LibraryModel& library, DemoLibrary::Random& random, Callbacks callbacks);

    /// Makes the roots and a first few bundles.
    void prepare();
    /// Does one more and says what it did.
    std::string doOne();

private:
    using Operation = std::optional<std::string> (Operations::*)();

    std::optional<std::string> create();
    std::optional<std::string> createUntitled();
    std::optional<std::string> nameUntitled();
    std::optional<std::string> save();
    std::optional<std::string> rename();
    std::optional<std::string> moveBundle();
    std::optional<std::string> copyBundle();
    std::optional<std::string> deleteBundle();
    std::optional<std::string> exchangeNames();
    std::optional<std::string> takeName();
    std::optional<std::string> moveByCopying();
    std::optional<std::string> createFolder();
    std::optional<std::string> renameFolder();
    std::optional<std::string> moveFolder();
    std::optional<std::string> deleteFolder();
    std::optional<std::string> moveOut();
    std::optional<std::string> moveBack();

    Bundle* pickListed();
    Path pickPlace();
    std::optional<Path> pickFolder();
    Path newName(const Path& folder, const std::string& suffix);
    double newTempo();
    void addBundle(const Path& path);
    std::string relocate(const std::string& verb, const Path& from, const Path& to);
    void settleBeforeMoving(const Path& path);
    /// Before deleting or moving out of the roots.
    void settleBeforeLosing(const Path& path);
    void settleUnless(bool determined);
    std::string shown(const Path& path) const;

    LibraryModel& m_library;
    DemoLibrary::Random& m_random;
    Callbacks m_callbacks;
    int m_names = 0;
    int m_tempos = 0;
    bool m_owesSettling = false;
};

} // namespace Storm
