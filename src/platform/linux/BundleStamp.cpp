#include "platform/linux/BundleStamp.h"

#include "platform/linux/AlternativeFolders.h"
#include "platform/posix/PathText.h"

#include <sys/stat.h>

#include <algorithm>

namespace Stemhaven {

namespace {

std::uint64_t nanoseconds(const timespec& time) {
    constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;
    if (time.tv_sec < 0)
        return 0;
    return static_cast<std::uint64_t>(time.tv_sec) * nanosecondsPerSecond +
        static_cast<std::uint64_t>(time.tv_nsec);
}

/// FNV-1a, a word at a time.
std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
    constexpr std::uint64_t prime = 0x100000001b3;
    return (hash ^ value) * prime;
}

/// Returns when the part's contents were changed, in seconds; 0 when it is not there.
std::int64_t addPart(const std::string& path, BundleStamp& stamp) {
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) {
        stamp.fingerprint = mixed(stamp.fingerprint, 0);
        return 0;
    }
    const std::uint64_t modified = nanoseconds(status.st_mtim);
    const std::uint64_t changed = nanoseconds(status.st_ctim);
    stamp.newest = std::max({stamp.newest, modified, changed});
    for (const std::uint64_t value :
         {std::uint64_t{status.st_ino}, modified, static_cast<std::uint64_t>(status.st_size)})
        stamp.fingerprint = mixed(stamp.fingerprint, value);
    return status.st_mtim.tv_sec;
}

} // namespace

BundleStamp BundleStamp::of(const std::string& bundle) {
    BundleStamp stamp;
    const std::string resources = entryOf(bundle, BundleParts::resources);
    const std::string alternatives = entryOf(bundle, BundleParts::alternatives);
    // Not the resources folder itself: the program's own note changes its time, which says nothing of the
    // project.
    addPart(bundle, stamp);
    stamp.informationSeconds = addPart(entryOf(resources, BundleParts::information), stamp);
    addPart(alternatives, stamp);

    for (const auto& name : alternativesIn(alternatives)) {
        const std::string alternative = entryOf(alternatives, name);
        addPart(alternative, stamp);
        addPart(entryOf(alternative, BundleParts::metaData), stamp);
    }
    return stamp;
}

} // namespace Stemhaven
