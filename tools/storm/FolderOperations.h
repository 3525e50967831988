#pragma once

#include "OperationGroup.h"

namespace Storm {

/// What happens to folders with all that they hold: they are created, renamed, moved, deleted, leave the
/// roots and come back, and take each other's places.
class FolderOperations : public OperationGroup<FolderOperations> {
public:
    using OperationGroup::OperationGroup;

    std::vector<Operation> all();

    Outcome create();

private:
    Outcome rename();
    Outcome move();
    Outcome remove();
    Outcome moveOut();
    Outcome moveBack();
    Outcome exchange();
    Outcome moveUpChain();

    std::vector<Path> pickTwins(std::size_t count);
    std::string createTwins();
    /// In the order given, each to the place that the one before it left.
    std::string relocateAll(const std::vector<std::pair<Path, Path>>& steps);
    void settleBeforeReplacing(const std::vector<Path>& twins);

    int m_series = 0;
};

} // namespace Storm
