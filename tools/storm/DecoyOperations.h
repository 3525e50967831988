#pragma once

#include "OperationGroup.h"

namespace Storm {

/// Names and entries that are easily taken for what they are not. What is hidden, what lies in a folder whose
/// name only holds the suffix and what borrows another bundle's Resources is unknown to the model: whatever
/// the catalogue makes of it, no bundle that the model knows may suffer.
class DecoyOperations : public OperationGroup<DecoyOperations> {
public:
    using OperationGroup::OperationGroup;

    std::vector<Operation> all();

private:
    Outcome doubleApostrophes();
    Outcome hide();
    Outcome unhide();
    Outcome nestSuffix();
    Outcome linkResources();

    /// A bundle that the model knows: when it has its record, the program has seen what was made before it
    /// too.
    std::string addMarker();

    int m_names = 0;
};

} // namespace Storm
