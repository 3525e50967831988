#include "ui/widgets/JpegHeader.h"

#include <string_view>

namespace {

enum Marker : unsigned char { Baseline = 0xC0, Extended = 0xC1, StartOfImage = 0xD8, StartOfScan = 0xDA };

constexpr std::size_t componentsInFrame = 7; ///< behind length, precision, height and width
constexpr std::size_t componentsInScan = 2;  ///< behind the length

/// One marker with its segment, which begins with its own length.
struct Segment {
    unsigned char marker = 0;
    std::string_view bytes;
};

unsigned char byteAt(std::string_view bytes, std::size_t index) {
    return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0;
}

/// Takes the next segment off the rest; one without bytes when there is none.
Segment takeSegment(std::string_view& rest) {
    constexpr unsigned char fill = 0xFF;
    if (byteAt(rest, 0) != fill)
        return {};
    while (byteAt(rest, 0) == fill)
        rest.remove_prefix(1);
    const unsigned char marker = byteAt(rest, 0);
    const std::size_t length = byteAt(rest, 1) * 256U + byteAt(rest, 2);
    if (rest.size() < 1 + length)
        return {};
    const Segment segment{marker, rest.substr(1, length)};
    rest.remove_prefix(1 + length);
    return segment;
}

} // namespace

bool isJpegOfOnePass(const QByteArray& data) {
    std::string_view rest(data.constData(), static_cast<std::size_t>(data.size()));
    if (byteAt(rest, 1) != StartOfImage)
        return false;
    rest.remove_prefix(2);

    unsigned char components = 0;
    for (Segment segment = takeSegment(rest); !segment.bytes.empty(); segment = takeSegment(rest)) {
        if (segment.marker == Baseline || segment.marker == Extended)
            components = byteAt(segment.bytes, componentsInFrame);
        else if (segment.marker == StartOfScan)
            return components != 0 && byteAt(segment.bytes, componentsInScan) == components;
    }
    return false;
}
