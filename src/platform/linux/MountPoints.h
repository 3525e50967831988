#pragma once

#include <set>
#include <string>

namespace Stemhaven {

/// Where file systems are mounted now, each with the number of its mount, so that another one at the same
/// place differs.
std::set<std::string> currentMountPoints();

} // namespace Stemhaven
