#pragma once

#include "plist/Value.h"

#include <string>
#include <string_view>

namespace Plist {

/// On one line, padded to a multiple of four characters.
std::string base64Encode(const Data& data);

/// Passes over white space and ends at the first padding character. Throws Error for anything else that is
/// not of the alphabet, and for a lone last character, which holds less than a byte.
Data base64Decode(std::string_view text);

} // namespace Plist
