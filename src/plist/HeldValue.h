#pragma once

#include "plist/Value.h"

#include <cstdint>
#include <string>
#include <typeinfo>

namespace Plist {

/// Calls visitor with what value holds, as one of the types that readers make: integers come as std::int64_t
/// and floating-point numbers as double. Throws Error for an empty value
/// and for a type that a property list cannot hold.
template <typename Visitor>
void visitHeldValue(const Value& value, Visitor&& visitor) {
    if (!value.has_value())
        throw Error("Plist Error: Can't serialize an empty value");
    const std::type_info& type = value.type();
    const auto visitedAs = [&]<typename Held, typename As = const Held&>() {
        if (type != typeid(Held))
            return false;
        visitor(static_cast<As>(*std::any_cast<Held>(&value)));
        return true;
    };
    const auto visitedAsInteger = [&]<typename... Held>() {
        return (visitedAs.template operator()<Held, std::int64_t>() || ...);
    };

    const bool visited = visitedAs.template operator()<std::string>() ||
        visitedAsInteger.template operator()<std::int64_t, long, long long, int, short>() ||
        visitedAs.template operator()<double, double>() || visitedAs.template operator()<bool, bool>() ||
        visitedAs.template operator()<Dictionary>() || visitedAs.template operator()<Array>() ||
        visitedAs.template operator()<Date>() || visitedAs.template operator()<Data>() ||
        visitedAs.template operator()<float, double>();
    if (!visited)
        throw Error(std::string("Plist Error: Can't serialize type ") + type.name());
}

} // namespace Plist
