#pragma once

#include "Toolbox.h"

namespace Storm {

/// What happens to single bundles: they are created, saved, renamed, moved, copied, deleted, and take each
/// other's names.
class BundleOperations {
public:
    explicit BundleOperations(Toolbox& tools) : m_tools(tools) {}

    std::vector<Operation> all();

    std::string create();

private:
    using Path = Toolbox::Path;
    using Outcome = std::optional<std::string>;

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

    Toolbox& m_tools;
    int m_untitled = 0;
};

} // namespace Storm
