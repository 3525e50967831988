#pragma once

#include "OperationGroup.h"

namespace Storm {

/// What happens to the folders that the program follows: a drive is unplugged and perhaps plugged in again,
/// and one that was taken off the list is renamed around the projects that it holds.
class RootOperations : public OperationGroup<RootOperations> {
public:
    using OperationGroup::OperationGroup;

    std::vector<Operation> all();

    /// Makes the projects that become strays.
    void prepare();

private:
    Outcome unplug();
    Outcome plugIn();
    Outcome renameAboveStrays();

    std::string copyAway(const Path& root);
    bool isAllCertain() const;

    Path m_folderAboveStrays;
    bool m_isTakenOffList = false;
    int m_names = 0;
};

} // namespace Storm
