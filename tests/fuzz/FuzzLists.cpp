// Any bytes as a property list: what can be read can be written, and reads back the same.

#include "FuzzTarget.h"
#include "plist/PropertyList.h"

#include <algorithm>
#include <vector>

namespace {

using Bytes = std::vector<char>;

Bytes binary(const Plist::Value& value) {
    Bytes bytes;
    Plist::writePlistBinary(bytes, value);
    return bytes;
}

Plist::Value read(const Bytes& bytes) {
    Plist::Value value;
    Plist::readPlist(bytes.data(), static_cast<std::int64_t>(bytes.size()), value);
    return value;
}

/// Takes the values that there are off rest; false once there are more. Few bytes may stand for many values,
/// which are slow to write without being different.
bool areFew(const Plist::Value& value, int& rest) {
    if (--rest < 0)
        return false;
    if (const auto* array = std::any_cast<Plist::Array>(&value))
        return std::all_of(
            array->begin(), array->end(), [&](const auto& element) { return areFew(element, rest); });
    if (const auto* dictionary = std::any_cast<Plist::Dictionary>(&value)) {
        return std::all_of(dictionary->begin(), dictionary->end(), [&](const auto& entry) {
            return areFew(entry.second, rest);
        });
    }
    return true;
}

void writeAndReadBack(const Plist::Value& value) {
    const Bytes written = binary(value);
    require(binary(read(written)) == written);
    try {
        Bytes xml;
        Plist::writePlistXML(xml, value);
    } catch (const Plist::Error&) { // NOLINT(bugprone-empty-catch)
        // XML has no null byte, and no date beyond the calendar.
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Plist::Value value;
    try {
        Plist::readPlist(reinterpret_cast<const char*>(data), static_cast<std::int64_t>(size), value);
    } catch (const Plist::Error&) {
        return 0;
    } catch (const std::range_error&) {
        return 0;
    }
    if (int rest = 1000; areFew(value, rest))
        writeAndReadBack(value);
    return 0;
}
