#pragma once

#include <CoreServices/CoreServices.h>
#include <memory>
#include <type_traits>

namespace Stemhaven {

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns one reference to an object of CoreFoundation; made from what a Create or Copy function gives.
template <typename Ref>
using CFOwner = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

} // namespace Stemhaven
