#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// Whether a folder of that name in a bundle's Alternatives is one of its alternatives: three digits.
bool isAlternativeName(std::string_view name);

/// The names of the alternatives in a bundle's folder Alternatives, sorted. Costs no more in a folder with
/// hundreds of thousands of other entries.
std::vector<std::string> alternativesIn(const std::string& folder);

} // namespace Stemhaven
