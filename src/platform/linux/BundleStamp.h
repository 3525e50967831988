#pragma once

#include <cstdint>
#include <string>

namespace Stemhaven {

/// The parts of a bundle that its record is made from.
namespace BundleParts {

inline constexpr const char* resources = "Resources";
inline constexpr const char* information = "ProjectInformation.plist";
inline constexpr const char* alternatives = "Alternatives";
inline constexpr const char* metaData = "MetaData.plist";

} // namespace BundleParts

/// When those parts were changed, without a look into them.
struct BundleStamp {
    /// Nanoseconds since 1970, of contents or of attributes: a file put back from elsewhere keeps its own
    /// time but not that of its attributes.
    std::uint64_t newest = 0;
    /// Differs when any part has another time, size or inode.
    std::uint64_t fingerprint = 0;
    /// When the contents of the information file were changed, in seconds since 1970; 0 when there is none.
    std::int64_t informationSeconds = 0;

    static BundleStamp of(const std::string& bundle);

    bool operator==(const BundleStamp&) const = default;
};

} // namespace Stemhaven
