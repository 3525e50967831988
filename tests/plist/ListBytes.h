#pragma once

#include "plist/PropertyList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The bytes of a binary property list, put together by hand from the bytes of its objects.
struct ListBytes {
    std::vector<std::string> objects = {};
    unsigned offsetSize = 1;
    unsigned referenceSize = 1;
    std::optional<std::uint64_t> objectCount = {};
    std::optional<std::uint64_t> tableOffset = {};
    std::uint64_t topObject = 0;

    std::string bytes() const;
};

std::string bigEndian(std::uint64_t number, std::size_t size);
std::string repeated(const std::string& text, std::size_t count);

Plist::Value read(const std::string& bytes);
std::string binary(const Plist::Value& value);
std::string xml(const Plist::Value& value);

/// The message of the Plist::Error that reading bytes ends in, or "read".
std::string errorOf(const std::string& bytes);

std::string contentsOf(const std::string& fileName);
