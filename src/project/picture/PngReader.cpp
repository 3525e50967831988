#include "project/picture/PngReader.h"

#include "project/picture/BigEndian.h"

#include <algorithm>

namespace Stemhaven {

namespace {

constexpr std::size_t lengthSize = 4;
constexpr std::size_t typeSize = 4;
constexpr std::size_t checksumSize = 4;
constexpr std::size_t maxPaletteSize = 768;
/// The greatest number that a PNG may write in four bytes.
constexpr std::uint64_t maxNumber = 0x7FFFFFFF;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// A decoder may pass over such chunks.
bool isAncillary(std::string_view type) {
    return type.front() >= 'a';
}

bool isDepthOfColourType(std::uint64_t depth, std::uint64_t colourType) {
    switch (colourType) {
    case 0:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case 3:
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case 2:
    case 4:
    case 6:
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}

} // namespace

PngReader::PngReader(std::string_view bytes) : m_rest(bytes.substr(signature.size())) {
    m_picture.format = "png";
    m_picture.bytes.reserve(static_cast<qsizetype>(bytes.size()));
    m_picture.bytes.append(signature.data(), static_cast<qsizetype>(signature.size()));
}

std::optional<PlainPicture> PngReader::read() {
    while (m_place != Place::End) {
        const auto chunk = takeChunk();
        if (!chunk)
            return std::nullopt;
        const bool isPassedOver = isAncillary(chunk->type) && chunk->type != "tRNS";
        if (isPassedOver && m_place != Place::Begin) {
            if (m_place == Place::Pixels)
                m_place = Place::AfterPixels;
            continue;
        }
        if (!accept(*chunk))
            return std::nullopt;
        m_picture.bytes.append(chunk->whole.data(), static_cast<qsizetype>(chunk->whole.size()));
    }
    return std::move(m_picture);
}

std::optional<PngReader::Chunk> PngReader::takeChunk() {
    constexpr std::size_t frame = lengthSize + typeSize + checksumSize;
    if (m_rest.size() < frame)
        return std::nullopt;
    const std::uint64_t length = bigEndian(m_rest.substr(0, lengthSize));
    const std::string_view type = m_rest.substr(lengthSize, typeSize);
    if (length > m_rest.size() - frame || !std::all_of(type.begin(), type.end(), isLetter))
        return std::nullopt;
    const Chunk chunk{type, m_rest.substr(lengthSize + typeSize, length), m_rest.substr(0, frame + length)};
    m_rest.remove_prefix(chunk.whole.size());
    return chunk;
}

bool PngReader::accept(const Chunk& chunk) {
    const auto comes = [this](Place first, Place last, Place next) {
        const bool isInOrder = m_place >= first && m_place <= last;
        m_place = next;
        return isInOrder;
    };
    if (chunk.type == "IHDR")
        return comes(Place::Begin, Place::Begin, Place::Header) && acceptHeader(chunk);
    if (chunk.type == "PLTE") {
        return comes(Place::Header, Place::Header, Place::Palette) && chunk.data.size() % 3 == 0 &&
            chunk.data.size() <= maxPaletteSize;
    }
    if (chunk.type == "tRNS")
        return comes(Place::Header, Place::Palette, Place::Transparency) && chunk.data.size() <= 256;
    if (chunk.type == "IDAT")
        return comes(Place::Header, Place::Pixels, Place::Pixels);
    if (chunk.type == "IEND")
        return comes(Place::Pixels, Place::AfterPixels, Place::End) && chunk.data.empty();
    return false;
}

bool PngReader::acceptHeader(const Chunk& chunk) {
    constexpr std::size_t headerSize = 13;
    if (chunk.data.size() != headerSize)
        return false;
    const auto number = [&chunk](std::size_t at, std::size_t size = 1) {
        return bigEndian(chunk.data.substr(at, size));
    };
    const std::uint64_t width = number(0, 4);
    const std::uint64_t height = number(4, 4);
    const std::uint64_t depth = number(8);
    const bool isKnown =
        isDepthOfColourType(depth, number(9)) && number(10) == 0 && number(11) == 0 && number(12) <= 1;
    if (!isKnown || width == 0 || height == 0 || width > maxNumber || height > maxNumber)
        return false;
    m_picture.size = QSize(static_cast<int>(width), static_cast<int>(height));
    // Four or eight bytes a pixel, of which scaling may make a second copy.
    const std::uint64_t bytesPerPixel = depth == 16 ? 16 : 8;
    return width * height <= static_cast<std::uint64_t>(maxDecodedBytes) / bytesPerPixel;
}

} // namespace Stemhaven
