#pragma once

#include "plist/Value.h"

namespace Plist {

/// How deep dictionaries and arrays may nest, so that no list, read or written, can exhaust the stack.
constexpr int maxDepth = 512;

/// To be called with the number of containers around the one that is being entered.
inline void checkDepth(int depth) {
    if (depth >= maxDepth)
        throw Error("Plist: nested too deeply");
}

} // namespace Plist
