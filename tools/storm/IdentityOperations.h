#pragma once

#include "OperationGroup.h"

namespace Storm {

/// What makes it hard to say which record a bundle has: backups and sync clients that put bundles back, with
/// their notes and without, and copies whose originals move.
class IdentityOperations : public OperationGroup<IdentityOperations> {
public:
    using OperationGroup::OperationGroup;

    std::vector<Operation> all();

private:
    /// Of a bundle that is deleted.
    struct Backup {
        int tag = 0;
        Path stored;
    };

    Outcome backUpAndDelete();
    Outcome restore();
    Outcome putBack();
    Outcome emptyNote();
    Outcome copyThenMove();
    Outcome bringForeign();

    /// Named like the given path, and hidden from the program.
    Path newStored(const Path& path);

    std::vector<Backup> m_backups;
    int m_stored = 0;
};

} // namespace Storm
