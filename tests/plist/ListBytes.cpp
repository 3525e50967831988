#include "ListBytes.h"

#include <fstream>
#include <iterator>

std::string bigEndian(std::uint64_t number, std::size_t size) {
    std::string bytes;
    for (std::size_t i = size; i-- > 0;)
        bytes += i < 8 ? static_cast<char>(number >> (8 * i)) : '\0';
    return bytes;
}

std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string ListBytes::bytes() const {
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

Plist::Value read(const std::string& bytes) {
    Plist::Value value;
    Plist::readPlist(bytes.data(), static_cast<std::int64_t>(bytes.size()), value);
    return value;
}

std::string binary(const Plist::Value& value) {
    std::vector<char> bytes;
    Plist::writePlistBinary(bytes, value);
    return {bytes.begin(), bytes.end()};
}

std::string xml(const Plist::Value& value) {
    std::vector<char> bytes;
    Plist::writePlistXML(bytes, value);
    return {bytes.begin(), bytes.end()};
}

std::string errorOf(const std::string& bytes) {
    try {
        read(bytes);
    } catch (const Plist::Error& error) {
        return error.what();
    }
    return "read";
}

std::string contentsOf(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
