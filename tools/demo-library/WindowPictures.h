#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace DemoLibrary {

/// Pictures of an arrangement as a project keeps one of its window: regions in colours on rows of tracks, as
/// JPEG.
///
/// Drawing is slow against writing, so there is a handful of pictures, each drawn when it is first asked for.
class WindowPictures {
public:
    const std::vector<char>& picture(std::uint64_t seed);

private:
    std::map<std::uint64_t, std::vector<char>> m_pictures;
};

} // namespace DemoLibrary
