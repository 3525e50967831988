#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// One input. It ends the process where something is wrong with what the program makes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline void require(bool holds) {
    if (!holds)
        std::abort();
}
