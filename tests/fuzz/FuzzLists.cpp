// Any bytes as a property list: what can be read can be written, and reads back the same.

#include "FuzzTarget.h"
#include "plist/PropertyList.h"

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
    writeAndReadBack(value);
    return 0;
}
