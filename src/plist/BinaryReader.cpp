#include "plist/BinaryReader.h"

#include <bit>

namespace Plist {

namespace {

constexpr std::uint64_t trailerSize = 32;

[[noreturn]] void failOutOfBounds() {
    throw Error("Out of bounds getRange");
}

std::string_view getRange(std::string_view bytes, std::uint64_t begin, std::uint64_t length) {
    if (begin > bytes.size() || length > bytes.size() - begin)
        failOutOfBounds();
    return {bytes.data() + begin, length};
}

std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

bool parseBoolean(unsigned marker) {
    switch (marker) {
    case 0x08:
        return false;
    case 0x09:
        return true;
    case 0x00:
        throw Error("Plist: null byte encountered, unsure how to parse");
    case 0x0F:
        throw Error("Plist: fill byte encountered, unsure how to parse");
    default:
        throw Error("Plist: unknown header " + std::to_string(marker));
    }
}

void appendUtf8(std::string& out, std::uint32_t codePoint) {
    const auto append = [&out](std::uint32_t byte) {
        out += static_cast<char>(byte);
    };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
        append(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        append(0xE0 | codePoint >> 12);
        append(0x80 | (codePoint >> 6 & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    } else {
        append(0xF0 | codePoint >> 18);
        append(0x80 | (codePoint >> 12 & 0x3F));
        append(0x80 | (codePoint >> 6 & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    }
}

std::string utf16ToUtf8(std::string_view units) {
    const auto isSurrogate = [](std::uint32_t unit, std::uint32_t first) {
        return unit >= first && unit < first + 0x400;
    };
    std::string out;
    out.reserve(units.size() / 2);
    for (std::size_t i = 0; i < units.size(); i += 2) {
        auto codePoint = static_cast<std::uint32_t>(bigEndian(units.substr(i, 2)));
        if (isSurrogate(codePoint, 0xD800) && i + 2 < units.size()) {
            const auto low = static_cast<std::uint32_t>(bigEndian(units.substr(i + 2, 2)));
            if (isSurrogate(low, 0xDC00)) {
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        if (codePoint >= 0xD800 && codePoint < 0xE000)
            throw std::range_error("Plist: string is not UTF-16");
        appendUtf8(out, codePoint);
    }
    return out;
}

} // namespace

BinaryReader::BinaryReader(std::string_view file) : m_allowance(file.size()) {
    if (file.size() <= trailerSize)
        failOutOfBounds();
    const std::uint64_t bodySize = file.size() - trailerSize;
    const std::string_view trailer = file.substr(bodySize);
    m_offsetByteSize = bigEndian(trailer.substr(6, 1));
    m_objRefSize = bigEndian(trailer.substr(7, 1));
    const std::uint64_t objectCount = bigEndian(trailer.substr(12, 4));
    const std::uint64_t offsetTableOffset = bigEndian(trailer.substr(24, 8));

    const auto isWidth = [](std::size_t size) {
        return size >= 1 && size <= sizeof(std::uint64_t);
    };
    if (!isWidth(m_offsetByteSize) || !isWidth(m_objRefSize))
        throw Error("Plist: unknown size of offsets or references");
    m_objectTable = getRange(file.substr(0, bodySize), 0, offsetTableOffset);
    m_offsetTable = file.substr(offsetTableOffset, bodySize - offsetTableOffset);
    m_offsetCount = m_offsetTable.size() / m_offsetByteSize;
    if (objectCount > m_offsetCount)
        failOutOfBounds();
}

Value BinaryReader::read() {
    Value root;
    parse(objectNumber(0), 0, root);
    return root;
}

// An object that contains itself needs no check of its own: it nests without end, so the depth ends it.
void BinaryReader::parse(const Object& object, int depth, Value& out) {
    switch (object.kind()) {
    case 0x0:
        out.emplace<bool>(parseBoolean(object.marker));
        break;
    case 0x1:
        out.emplace<std::int64_t>(integerOf(object).value);
        break;
    case 0x2:
        out.emplace<double>(parseReal(object));
        break;
    case 0x3:
        out.emplace<Date>(parseDate(object));
        break;
    case 0x4:
        m_allowance.takeHeldApart();
        out.emplace<Data>(parseData(object));
        break;
    case 0x5:
    case 0x6:
        m_allowance.takeHeldApart();
        out.emplace<std::string>(parseString(object));
        break;
    case 0xA:
        m_allowance.takeHeldApart();
        parseArray(object, depth, out);
        break;
    case 0xD:
        m_allowance.takeHeldApart();
        parseDictionary(object, depth, out);
        break;
    default:
        throw Error("This type is not supported");
    }
}

double BinaryReader::parseReal(const Object& object) const {
    switch (object.marker) {
    case 0x22: {
        const std::uint64_t bits = bigEndian(getRange(m_objectTable, object.end, sizeof(float)));
        return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    }
    case 0x23:
        return std::bit_cast<double>(bigEndian(getRange(m_objectTable, object.end, sizeof(double))));
    default:
        throw Error("This type is not supported");
    }
}

Date BinaryReader::parseDate(const Object& object) const {
    Date date;
    date.setTimeFromAppleEpoch(
        std::bit_cast<double>(bigEndian(getRange(m_objectTable, object.end, sizeof(double)))));
    return date;
}

Data BinaryReader::parseData(const Object& object) {
    const std::string_view bytes = payload(object, 1);
    m_allowance.takeBytes(bytes.size());
    return {bytes.begin(), bytes.end()};
}

std::string BinaryReader::parseString(const Object& object) {
    if (object.kind() == 0x5) {
        const std::string_view bytes = payload(object, 1);
        m_allowance.takeBytes(bytes.size());
        return std::string(bytes);
    }
    const std::string_view units = payload(object, 2);
    m_allowance.takeBytes(units.size() / 2 * 3);
    return utf16ToUtf8(units);
}

void BinaryReader::parseArray(const Object& object, int depth, Value& out) {
    checkDepth(depth);
    const std::string_view references = payload(object, m_objRefSize);
    const std::size_t count = references.size() / m_objRefSize;
    m_allowance.takeElements(count);
    Array& array = out.emplace<Array>(count);
    for (std::size_t i = 0; i < count; ++i)
        parse(referencedObject(references, i), depth + 1, array[i]);
}

void BinaryReader::parseDictionary(const Object& object, int depth, Value& out) {
    checkDepth(depth);
    const std::string_view references = payload(object, 2 * m_objRefSize);
    const std::size_t count = references.size() / (2 * m_objRefSize);
    m_allowance.takeEntries(count);
    Dictionary& dictionary = out.emplace<Dictionary>();
    for (std::size_t i = 0; i < count; ++i) {
        const Object key = referencedObject(references, i);
        if (key.kind() != 0x5 && key.kind() != 0x6)
            throw Error("Error parsing dictionary.  Key can't be parsed as a string");
        const auto entry = dictionary.try_emplace(dictionary.end(), parseString(key));
        parse(referencedObject(references, count + i), depth + 1, entry->second);
    }
}

BinaryReader::Object BinaryReader::referencedObject(std::string_view references, std::size_t position) const {
    return objectNumber(bigEndian({references.data() + position * m_objRefSize, m_objRefSize}));
}

BinaryReader::Object BinaryReader::objectNumber(std::uint64_t number) const {
    if (number >= m_offsetCount)
        failOutOfBounds();
    return objectAt(bigEndian({m_offsetTable.data() + number * m_offsetByteSize, m_offsetByteSize}));
}

BinaryReader::Object BinaryReader::objectAt(std::uint64_t offset) const {
    return {static_cast<unsigned char>(getRange(m_objectTable, offset, 1).front()), offset + 1};
}

BinaryReader::Integer BinaryReader::integerOf(const Object& object) const {
    if (object.detail() > 3)
        throw Error("This type is not supported");
    const std::uint64_t width = 1U << object.detail();
    const std::uint64_t number = bigEndian(getRange(m_objectTable, object.end, width));
    return {static_cast<std::int64_t>(number), object.end + width};
}

// The units that the length of an object announces, which follow it or the integer that holds it.
std::string_view BinaryReader::payload(const Object& object, std::uint64_t unitSize) const {
    std::uint64_t count = object.detail();
    std::uint64_t begin = object.end;
    if (count == 0xF) {
        const Object length = objectAt(begin);
        if (length.kind() != 0x1)
            throw Error("Plist: length is not an integer");
        const Integer integer = integerOf(length);
        count = static_cast<std::uint64_t>(integer.value); // of a negative one, more than any data has
        begin = integer.end;
    }
    if (count > m_objectTable.size() / unitSize)
        failOutOfBounds();
    return getRange(m_objectTable, begin, count * unitSize);
}

} // namespace Plist
