#include "platform/linux/AlternativeFolders.h"

#include "platform/TreeWalk.h"
#include "platform/posix/PathText.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace Stemhaven {

namespace {

constexpr int possibleNames = 1000;
constexpr std::size_t mostEntriesRead = 4096;

bool isFolder(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

bool isAlternativeName(std::string_view name) {
    constexpr std::size_t digits = 3;
    return name.size() == digits && name.find_first_not_of("0123456789") == std::string_view::npos;
}

std::vector<std::string> alternativesIn(const std::string& folder) {
    std::vector<std::string> names;
    const auto listing = FolderListing::of(folder, mostEntriesRead);
    if (!listing.isCut) {
        for (const auto& entry : listing.entries) {
            if (entry.kind == FolderListing::Kind::Folder && isAlternativeName(entry.name))
                names.push_back(entry.name);
        }
        // Some file systems give another order each time.
        std::sort(names.begin(), names.end());
        return names;
    }
    for (int number = 0; number < possibleNames; ++number) {
        std::array<char, 4> name = {};
        std::snprintf(name.data(), name.size(), "%03d", number);
        if (isFolder(entryOf(folder, name.data())))
            names.emplace_back(name.data());
    }
    return names;
}

} // namespace Stemhaven
