#include "plist/BinaryWriter.h"

#include "plist/HeldValue.h"
#include "plist/Limits.h"

#include <bit>

namespace Plist {

namespace {

// Bounds the depth as well: all that is written later has been walked here.
std::size_t countObjects(const Value& value, int depth) {
    std::size_t count = 1;
    if (const auto* dictionary = std::any_cast<Dictionary>(&value)) {
        checkDepth(depth);
        for (const auto& [key, element] : *dictionary)
            count += 1 + countObjects(element, depth + 1);
    } else if (const auto* array = std::any_cast<Array>(&value)) {
        checkDepth(depth);
        for (const Value& element : *array)
            count += countObjects(element, depth + 1);
    }
    return count;
}

// Not rounded up to a power of two: 3 bytes are as good as any.
std::size_t bytesNeeded(std::uint64_t number) {
    const auto bits = static_cast<std::size_t>(std::bit_width(number));
    return bits == 0 ? 1 : (bits + 7) / 8;
}

void putBigEndian(char* out, std::uint64_t number, std::size_t size) {
    for (std::size_t i = size; i-- > 0; number >>= 8)
        out[i] = static_cast<char>(number & 0xFFU);
}

} // namespace

std::vector<char> BinaryWriter::write(const Value& root) {
    m_objectCount = countObjects(root, 0);
    m_objRefSize = bytesNeeded(m_objectCount);
    m_offsetTable.reserve(m_objectCount);
    constexpr std::string_view header = "bplist00";
    m_objectTable.assign(header.begin(), header.end());
    writeObject(root);
    writeOffsetTableAndTrailer();
    return std::move(m_objectTable);
}

void BinaryWriter::writeObject(const Value& value) {
    visitHeldValue(value, [this](const auto& held) { writeHeld(held); });
}

void BinaryWriter::writeHeld(std::int64_t value) {
    beginObject();
    writeInteger(value);
}

void BinaryWriter::writeHeld(double value) {
    beginObject();
    append(0x23, 1);
    append(std::bit_cast<std::uint64_t>(value), sizeof(value));
}

void BinaryWriter::writeHeld(bool value) {
    beginObject();
    append(value ? 0x09 : 0x08, 1);
}

void BinaryWriter::writeHeld(const Date& value) {
    beginObject();
    append(0x33, 1);
    append(std::bit_cast<std::uint64_t>(value.timeAsAppleEpoch()), sizeof(double));
}

void BinaryWriter::writeHeld(const Data& value) {
    beginObject();
    writeLength(0x40, value.size());
    m_objectTable.insert(m_objectTable.end(), value.begin(), value.end());
}

// Always under the marker for ASCII, UTF-8 or not: the reader takes those bytes as they are.
void BinaryWriter::writeHeld(std::string_view value) {
    beginObject();
    writeLength(0x50, value.size());
    m_objectTable.insert(m_objectTable.end(), value.begin(), value.end());
}

void BinaryWriter::writeHeld(const Array& value) {
    beginObject();
    writeLength(0xA0, value.size());
    std::size_t reference = reserveReferences(value.size());
    for (const Value& element : value) {
        setNextReference(reference);
        writeObject(element);
    }
}

void BinaryWriter::writeHeld(const Dictionary& value) {
    beginObject();
    writeLength(0xD0, value.size());
    std::size_t keyReference = reserveReferences(value.size());
    std::size_t valueReference = reserveReferences(value.size());
    for (const auto& [key, element] : value) {
        setNextReference(keyReference);
        writeHeld(std::string_view(key));
        setNextReference(valueReference);
        writeObject(element);
    }
}

void BinaryWriter::beginObject() {
    m_offsetTable.push_back(m_objectTable.size());
}

void BinaryWriter::writeInteger(std::int64_t value) {
    const auto number = static_cast<std::uint64_t>(value);
    const std::size_t size = std::bit_ceil(bytesNeeded(number));
    append(0x10U | static_cast<unsigned>(std::countr_zero(size)), 1);
    append(number, size);
}

void BinaryWriter::writeLength(unsigned marker, std::size_t length) {
    if (length < 0xF) {
        append(marker | length, 1);
    } else {
        append(marker | 0xFU, 1);
        writeInteger(static_cast<std::int64_t>(length));
    }
}

std::size_t BinaryWriter::reserveReferences(std::size_t count) {
    const std::size_t begin = m_objectTable.size();
    m_objectTable.resize(begin + count * m_objRefSize);
    return begin;
}

void BinaryWriter::setNextReference(std::size_t& position) {
    putBigEndian(m_objectTable.data() + position, m_offsetTable.size(), m_objRefSize);
    position += m_objRefSize;
}

void BinaryWriter::writeOffsetTableAndTrailer() {
    const std::uint64_t offsetTableOffset = m_objectTable.size();
    const std::size_t offsetByteSize = bytesNeeded(m_offsetTable.back());
    for (const std::uint64_t offset : m_offsetTable)
        append(offset, offsetByteSize);
    append(0, 6);
    append(offsetByteSize, 1);
    append(m_objRefSize, 1);
    append(m_objectCount, 8);
    append(0, 8);
    append(offsetTableOffset, 8);
}

void BinaryWriter::append(std::uint64_t number, std::size_t size) {
    const std::size_t begin = m_objectTable.size();
    m_objectTable.resize(begin + size);
    putBigEndian(m_objectTable.data() + begin, number, size);
}

} // namespace Plist
