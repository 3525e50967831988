#pragma once

#include "project/picture/PlainPicture.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// Takes one JPEG to its segments and keeps those that the pixels need. Refuses every process but the three
/// that are in use (baseline, extended and progressive, Huffman-coded, 8 bits a sample), a second frame, more
/// scans than a frame can need, and what is cut short. Tables are the decoder's matter.
class JpegReader {
public:
    static constexpr std::string_view startOfImage{"\xFF\xD8", 2};

    /// bytes begin with startOfImage and outlive the reader.
    explicit JpegReader(std::string_view bytes);

    /// To be called once.
    std::optional<PlainPicture> read();

private:
    struct Component {
        unsigned char id = 0;
        std::int64_t blocks = 0;
        bool isScanned = false;
    };

    /// The marker that the rest begins with. Nothing where it begins with something else.
    std::optional<unsigned char> takeMarker();
    /// What follows a marker: the segment's length in two bytes, and its data.
    std::optional<std::string_view> takeSegment();
    /// What follows the header of a scan, up to the next marker.
    bool takeScanData();
    /// Whether the segment may stand where it does.
    bool accept(unsigned char marker, std::string_view segment);
    bool acceptFrame(std::string_view segment);
    bool acceptScan(std::string_view segment);
    void keep(unsigned char marker, std::string_view segment = {});
    bool isAffordable() const;

    std::string_view m_rest;
    PlainPicture m_picture;
    std::vector<Component> m_components; ///< empty until there is a frame
    bool m_isProgressive = false;
    bool m_isHeldAsAWhole = false;
    bool m_hasRestarts = false;
    std::int64_t m_scans = 0;
    std::int64_t m_blockVisits = 0;
};

} // namespace Stemhaven
