#pragma once

#include "plist/PropertyList.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

inline std::string bigEndian(std::uint64_t number, std::size_t size) {
    std::string bytes;
    for (std::size_t i = size; i-- > 0;)
        bytes += i < 8 ? static_cast<char>(number >> (8 * i)) : '\0';
    return bytes;
}

/// The bytes of a binary property list, put together by hand from the bytes of its objects.
struct ListBytes {
    std::vector<std::string> objects = {};
    unsigned offsetSize = 1;
    unsigned referenceSize = 1;
    std::optional<std::uint64_t> objectCount = {};
    std::optional<std::uint64_t> tableOffset = {};
    std::uint64_t topObject = 0;

    std::string bytes() const {
        std::string file = "bplist00";
        std::string table;
        for (const std::string& object : objects) {
            table += bigEndian(file.size(), offsetSize);
            file += object;
        }
        const std::uint64_t tableBegin = file.size();
        file += table + bigEndian(0, 6) + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1);
        file += bigEndian(objectCount.value_or(objects.size()), 8) + bigEndian(topObject, 8);
        return file + bigEndian(tableOffset.value_or(tableBegin), 8);
    }
};

inline Plist::Value read(const std::string& bytes) {
    Plist::Value value;
    Plist::readPlist(bytes.data(), static_cast<std::int64_t>(bytes.size()), value);
    return value;
}

inline std::string binary(const Plist::Value& value) {
    std::vector<char> bytes;
    Plist::writePlistBinary(bytes, value);
    return {bytes.begin(), bytes.end()};
}

inline std::string xml(const Plist::Value& value) {
    std::vector<char> bytes;
    Plist::writePlistXML(bytes, value);
    return {bytes.begin(), bytes.end()};
}

inline std::string contentsOf(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The message of the Plist::Error that call ends in, or "none".
template <typename Call>
std::string errorOf(const Call& call) {
    try {
        call();
    } catch (const Plist::Error& error) {
        return error.what();
    }
    return "none";
}
