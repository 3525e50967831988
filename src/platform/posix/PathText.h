#pragma once

#include <string>
#include <string_view>

namespace Stemhaven {

/// Paths here are bytes as the system has them, absolute, without a trailing "/".

inline bool isAtOrBelow(std::string_view path, std::string_view top) {
    return path.starts_with(top) && (path.size() == top.size() || path[top.size()] == '/');
}

/// "/" for what lies directly in it, empty for "/".
inline std::string_view parentOf(std::string_view path) {
    const auto slash = path.rfind('/');
    if (path.size() <= 1 || slash == std::string_view::npos)
        return {};
    return path.substr(0, slash == 0 ? 1 : slash);
}

inline std::string_view nameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

inline std::string entryOf(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.ends_with('/'))
        path += '/';
    return path.append(name);
}

inline bool isHidden(std::string_view path) {
    return nameOf(path).starts_with('.');
}

} // namespace Stemhaven
