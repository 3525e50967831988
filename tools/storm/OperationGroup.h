#pragma once

#include "Toolbox.h"

#include <initializer_list>

namespace Storm {

/// What the groups of operations have in common. Kind is the group, whose member functions do them.
template <typename Kind>
class OperationGroup {
public:
    explicit OperationGroup(Toolbox& tools) : m_tools(tools) {}

protected:
    using Path = Toolbox::Path;
    using Outcome = std::optional<std::string>;

    /// An operation before it is bound to the group.
    struct Entry {
        int weight = 0;
        const char* name = "";
        Outcome (Kind::*perform)() = nullptr;
    };

    std::vector<Operation> bound(std::initializer_list<Entry> entries) {
        auto* const group = static_cast<Kind*>(this);
        std::vector<Operation> operations;
        for (const Entry& entry : entries) {
            operations.push_back({entry.weight, entry.name, [group, perform = entry.perform] {
                                      return (group->*perform)();
                                  }});
        }
        return operations;
    }

    Toolbox& m_tools;
};

} // namespace Storm
