#pragma once

#include <QByteArray>
#include <QSize>

#include <cstdint>
#include <optional>

namespace Stemhaven {

/// A JPEG or PNG that may be decoded: strictly well-formed headers, nothing in it that its pixels do not
/// need, and a known greatest cost. Made from bytes alone; nothing is decoded.
struct PlainPicture {
    /// As QImageReader names it.
    const char* format = "";
    /// In pixels; neither side is 0.
    QSize size;
    /// The picture without its texts, profiles, thumbnails and whatever follows its end.
    QByteArray bytes;
};

/// The picture that bytes hold. Nothing where they hold no JPEG or PNG, one with a header that is not
/// understood in full, or one whose decoding could take more than the limits below. Any thread.
std::optional<PlainPicture> plainPicture(const QByteArray& bytes);

/// The most memory that the decoding of one picture may take: two copies of the pixels of a PNG, or the
/// coefficients of a JPEG that is held as a whole. Room for the picture of a 6K screen.
constexpr std::int64_t maxDecodedBytes = 160 << 20;
/// How often the decoding of one JPEG may come to a block of 64 coefficients, which takes up to 40 ns.
constexpr std::int64_t maxBlockVisits = 13 << 20;
/// The most bytes of a JPEG that is held as a whole, which take up to 70 ns each.
constexpr std::int64_t maxBufferedBytes = 8 << 20;

} // namespace Stemhaven
