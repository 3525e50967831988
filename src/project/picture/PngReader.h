#pragma once

#include "project/picture/PlainPicture.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace Stemhaven {

/// Takes one PNG to its chunks and keeps those that the pixels need: IHDR, PLTE, tRNS, IDAT and IEND. Refuses
/// critical chunks of other names, chunks out of order, and what is cut short. Checksums are the decoder's
/// matter.
class PngReader {
public:
    static constexpr std::string_view signature{"\x89PNG\r\n\x1A\n", 8};

    /// bytes begin with the signature and outlive the reader.
    explicit PngReader(std::string_view bytes);

    /// To be called once.
    std::optional<PlainPicture> read();

private:
    struct Chunk {
        std::string_view type;
        std::string_view data;
        /// With its length and checksum.
        std::string_view whole;
    };

    /// What has been seen so far, in the order that a PNG must have.
    enum class Place { Begin, Header, Palette, Transparency, Pixels, AfterPixels, End };

    std::optional<Chunk> takeChunk();
    /// Whether the chunk may stand where it does.
    bool accept(const Chunk& chunk);
    bool acceptHeader(const Chunk& chunk);

    std::string_view m_rest;
    Place m_place = Place::Begin;
    PlainPicture m_picture;
};

} // namespace Stemhaven
