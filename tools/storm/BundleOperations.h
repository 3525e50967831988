#pragma once

#include "OperationGroup.h"

namespace Storm {

/// What happens to single bundles: they are created, saved, renamed, moved, copied, deleted, and take each
/// other's names.
class BundleOperations : public OperationGroup<BundleOperations> {
public:
    using OperationGroup::OperationGroup;

    std::vector<Operation> all();

    Outcome create();

private:
    Outcome createUntitled();
    Outcome nameUntitled();
    Outcome save();
    Outcome rename();
    Outcome move();
    Outcome copy();
    Outcome remove();
    Outcome exchangeNames();
    Outcome takeName();
    Outcome moveByCopying();

    int m_untitled = 0;
};

} // namespace Storm
