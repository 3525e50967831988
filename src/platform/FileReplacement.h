#pragma once

#include <string>
#include <string_view>

namespace Stemhaven {

/// Puts a new file in the place of whatever stands at path, in one step: a reader sees the old file or the
/// whole new one. A link at path is replaced, not followed. The temporary file beside it begins with path's
/// own name; one that a killed program left behind is removed by the next replacement of path. path is in the
/// file system's encoding. Returns false, with everything as it was, when it cannot be done.
bool replaceFile(const std::string& path, std::string_view contents);

} // namespace Stemhaven
