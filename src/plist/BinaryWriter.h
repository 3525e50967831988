#pragma once

#include "plist/Value.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Plist {

/// Writes one binary property list. Values are never shared: one that occurs twice is written twice.
class BinaryWriter {
public:
    /// Throws Error for a value of a type that a property list cannot hold.
    std::vector<char> write(const Value& root);

private:
    void writeObject(const Value& value);
    void writeHeld(std::int64_t value);
    void writeHeld(double value);
    void writeHeld(bool value);
    void writeHeld(const Date& value);
    void writeHeld(const Data& value);
    void writeHeld(std::string_view value);
    void writeHeld(const Array& value);
    void writeHeld(const Dictionary& value);

    void beginObject();
    void writeInteger(std::int64_t value);
    void writeLength(unsigned marker, std::size_t length);
    std::size_t reserveReferences(std::size_t count);
    void setNextReference(std::size_t& position);
    void writeOffsetTableAndTrailer();
    void append(std::uint64_t number, std::size_t size);

    std::vector<char> m_objectTable; // grows into the whole file
    std::vector<std::uint64_t> m_offsetTable;
    std::size_t m_objectCount = 0;
    std::size_t m_objRefSize = 0;
};

} // namespace Plist
