#pragma once

#include <cstdint>
#include <string_view>

namespace Stemhaven {

/// The number in bytes, of which there are at most eight.
constexpr std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8U | static_cast<unsigned char>(byte);
    return number;
}

} // namespace Stemhaven
