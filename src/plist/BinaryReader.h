#pragma once

#include "plist/Limits.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Plist {

/// Reads one binary property list.
///
/// Nothing in the data is trusted: every range is checked against it before it is read or allocated for.
class BinaryReader {
public:
    /// file must outlive the reader. Throws Error where the trailer does not describe the file.
    explicit BinaryReader(std::string_view file);

    /// The root, which is object 0 whatever the trailer says. Throws Error, or std::range_error for a string
    /// that is not well-formed UTF-16.
    Value read();

private:
    struct Object {
        unsigned marker;
        std::uint64_t end; // the offset of what follows the marker

        unsigned kind() const { return marker >> 4; }

        unsigned detail() const { return marker & 0xFU; }
    };

    struct Integer {
        std::int64_t value;
        std::uint64_t end; // the offset of what follows it
    };

    void parse(const Object& object, int depth, Value& out);
    double parseReal(const Object& object) const;
    Date parseDate(const Object& object) const;
    Data parseData(const Object& object);
    std::string parseString(const Object& object);
    void parseArray(const Object& object, int depth, Value& out);
    void parseDictionary(const Object& object, int depth, Value& out);

    Object referencedObject(std::string_view references, std::size_t position) const;
    Object objectNumber(std::uint64_t number) const;
    Object objectAt(std::uint64_t offset) const;
    Integer integerOf(const Object& object) const;
    std::string_view payload(const Object& object, std::uint64_t unitSize) const;

    std::string_view m_objectTable; // with the header, so that offsets index it directly
    std::string_view m_offsetTable;
    std::uint64_t m_offsetCount = 0;
    std::size_t m_offsetByteSize = 0;
    std::size_t m_objRefSize = 0;
    Allowance m_allowance;
};

} // namespace Plist
