#pragma once

#include "BundleOperations.h"
#include "DecoyOperations.h"
#include "FolderOperations.h"
#include "IdentityOperations.h"
#include "RootOperations.h"
#include "Toolbox.h"

#include <string>
#include <vector>

namespace Storm {

/// What people, document programs, sync clients and drives do to a library. Each operation is done on disk
/// and in the model.
///
/// What the catalogue must make of each is determined, at whatever moment the program sees it, and whether it
/// runs, is stopped or is killed. Where it is not, settle is called first:
/// - a copy of a bundle that was moved may rightly take the record of the bundle, so the move must be known;
/// - so may a copy whose original is gone, so the copy must be known before the original is moved or deleted,
///   and before it leaves the roots itself;
/// - a bundle whose name another took must be known at its new place before it goes from the roots;
/// - a bundle that takes the name of another is told from it by the other's note, which must be written;
/// - a bundle that has lost its note is known by its path, so it must be seen there before it goes on;
/// - a copy gets its original's user data while the drive of the original is away, and none once it is back,
///   so it must be seen before that; and what was done before the drive goes away must be known.
/// No new bundle takes the place of a deleted one: it may have its number too, and then is the same project.
class Operations {
public:
    /// Only those of the given names, or all if there are none. Throws std::runtime_error for an unknown one.
    Operations(
        LibraryModel& library, DemoLibrary::Random& random, Toolbox::Callbacks callbacks,
        const std::vector<std::string>& only);

    /// Makes the roots and a first few bundles.
    void prepare();
    /// Does one more and says what it did.
    std::string doOne();

private:
    void choose(const std::vector<std::string>& names);

    Toolbox m_tools;
    BundleOperations m_bundleOperations;
    FolderOperations m_folderOperations;
    IdentityOperations m_identityOperations;
    DecoyOperations m_decoyOperations;
    RootOperations m_rootOperations;
    std::vector<Operation> m_operations;
};

} // namespace Storm
