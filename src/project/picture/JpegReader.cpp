#include "project/picture/JpegReader.h"

#include "project/picture/BigEndian.h"

#include <algorithm>

namespace Stemhaven {

namespace {

enum Marker : unsigned char {
    Baseline = 0xC0,
    Extended = 0xC1,
    Progressive = 0xC2,
    HuffmanTables = 0xC4,
    FirstRestart = 0xD0,
    LastRestart = 0xD7,
    EndOfImage = 0xD9,
    StartOfScan = 0xDA,
    QuantisationTables = 0xDB,
    RestartInterval = 0xDD,
    Jfif = 0xE0,
    Adobe = 0xEE,
    LastApplication = 0xEF,
    Comment = 0xFE,
};

constexpr char fill = '\xFF';
constexpr std::size_t lengthSize = 2;
/// What writers make has ten or a few more.
constexpr std::int64_t maxScans = 64;
constexpr std::int64_t bytesPerBlock = 128;
constexpr std::int64_t maxPixels = 256 << 20;

unsigned char byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

std::int64_t roundedUp(std::int64_t dividend, std::int64_t divisor) {
    return (dividend + divisor - 1) / divisor;
}

/// A segment of these says nothing of the pixels. Two do where they are as short as the standard has them:
/// they tell how colours are coded.
bool isPassedOver(unsigned char marker, std::string_view segment) {
    if (marker == Jfif)
        return segment.size() != 16 || !segment.substr(lengthSize).starts_with(std::string_view("JFIF\0", 5));
    if (marker == Adobe)
        return segment.size() != 14 || !segment.substr(lengthSize).starts_with("Adobe");
    return (marker > Jfif && marker <= LastApplication) || marker == Comment;
}

} // namespace

JpegReader::JpegReader(std::string_view bytes) : m_rest(bytes.substr(startOfImage.size())) {
    m_picture.format = "jpeg";
    m_picture.bytes.reserve(static_cast<qsizetype>(bytes.size()));
    m_picture.bytes.append(startOfImage.data(), static_cast<qsizetype>(startOfImage.size()));
}

std::optional<PlainPicture> JpegReader::read() {
    for (auto marker = takeMarker(); marker; marker = takeMarker()) {
        if (*marker == EndOfImage) {
            keep(EndOfImage);
            return m_scans > 0 && isAffordable() ? std::optional(std::move(m_picture)) : std::nullopt;
        }
        const auto segment = takeSegment();
        if (!segment)
            return std::nullopt;
        if (isPassedOver(*marker, *segment))
            continue;
        if (!accept(*marker, *segment))
            return std::nullopt;
        keep(*marker, *segment);
        if (*marker == StartOfScan && !takeScanData())
            return std::nullopt;
    }
    return std::nullopt;
}

std::optional<unsigned char> JpegReader::takeMarker() {
    const std::size_t code = m_rest.find_first_not_of(fill);
    if (code == 0 || code == std::string_view::npos)
        return std::nullopt;
    const unsigned char marker = byteAt(m_rest, code);
    m_rest.remove_prefix(code + 1);
    return marker;
}

std::optional<std::string_view> JpegReader::takeSegment() {
    const std::uint64_t length = bigEndian(m_rest.substr(0, lengthSize));
    if (length < lengthSize || length > m_rest.size())
        return std::nullopt;
    const std::string_view segment = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    return segment;
}

bool JpegReader::takeScanData() {
    std::size_t end = m_rest.find(fill);
    while (end < m_rest.size()) {
        const std::size_t code = m_rest.find_first_not_of(fill, end);
        if (code == std::string_view::npos)
            return false;
        const unsigned char marker = byteAt(m_rest, code);
        const bool isRestart = marker >= FirstRestart && marker <= LastRestart;
        // A null byte stands behind a value that looks like a marker.
        if (marker != 0 && !(isRestart && m_hasRestarts))
            break;
        end = m_rest.find(fill, code);
    }
    if (end >= m_rest.size())
        return false;
    m_picture.bytes.append(m_rest.data(), static_cast<qsizetype>(end));
    m_rest.remove_prefix(end);
    return true;
}

bool JpegReader::accept(unsigned char marker, std::string_view segment) {
    switch (marker) {
    case Baseline:
    case Extended:
    case Progressive:
        m_isProgressive = marker == Progressive;
        return acceptFrame(segment);
    case StartOfScan:
        return acceptScan(segment) && isAffordable();
    case RestartInterval:
        m_hasRestarts = bigEndian(segment.substr(lengthSize)) != 0;
        return segment.size() == lengthSize + 2;
    case HuffmanTables:
    case QuantisationTables:
    case Jfif:
    case Adobe:
        return true;
    default:
        return false;
    }
}

bool JpegReader::acceptFrame(std::string_view segment) {
    constexpr std::size_t fixedSize = lengthSize + 6;
    constexpr std::size_t componentSize = 3;
    constexpr std::int64_t blockSide = 8;
    if (!m_components.empty() || segment.size() < fixedSize)
        return false;
    const std::size_t count = byteAt(segment, 7);
    const bool isKnownCount = count == 1 || count == 3 || count == 4;
    if (byteAt(segment, 2) != 8 || !isKnownCount || segment.size() != fixedSize + componentSize * count)
        return false;
    const auto height = static_cast<std::int64_t>(bigEndian(segment.substr(3, 2)));
    const auto width = static_cast<std::int64_t>(bigEndian(segment.substr(5, 2)));
    if (width == 0 || height == 0)
        return false;
    m_picture.size = QSize(static_cast<int>(width), static_cast<int>(height));

    std::int64_t widest = 1;
    std::int64_t highest = 1;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view component = segment.substr(fixedSize + componentSize * i, componentSize);
        const unsigned across = byteAt(component, 1) >> 4U;
        const unsigned down = byteAt(component, 1) & 0xFU;
        if (across < 1 || across > 4 || down < 1 || down > 4)
            return false;
        widest = std::max<std::int64_t>(widest, across);
        highest = std::max<std::int64_t>(highest, down);
        m_components.push_back({byteAt(component, 0), std::int64_t{across} * down});
    }
    const std::int64_t units = roundedUp(width, blockSide * widest) * roundedUp(height, blockSide * highest);
    for (Component& component : m_components)
        component.blocks *= units;
    return true;
}

bool JpegReader::acceptScan(std::string_view segment) {
    constexpr std::size_t fixedSize = lengthSize + 4;
    if (segment.size() < fixedSize)
        return false;
    const std::size_t count = byteAt(segment, 2);
    if (count < 1 || count > m_components.size() || segment.size() != fixedSize + 2 * count)
        return false;
    std::vector<unsigned char> ids;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char id = byteAt(segment, lengthSize + 1 + 2 * i);
        const auto component = std::find_if(
            m_components.begin(), m_components.end(), [id](const Component& c) { return c.id == id; });
        const bool isTwice = std::find(ids.begin(), ids.end(), id) != ids.end();
        if (component == m_components.end() || isTwice || (component->isScanned && !m_isProgressive))
            return false;
        ids.push_back(id);
        component->isScanned = true;
        m_blockVisits += component->blocks;
    }
    m_isHeldAsAWhole = m_isHeldAsAWhole || m_isProgressive || count < m_components.size();
    return ++m_scans <= maxScans;
}

void JpegReader::keep(unsigned char marker, std::string_view segment) {
    m_picture.bytes.append(fill).append(static_cast<char>(marker));
    m_picture.bytes.append(segment.data(), static_cast<qsizetype>(segment.size()));
}

bool JpegReader::isAffordable() const {
    std::int64_t blocks = 0;
    for (const Component& component : m_components)
        blocks += component.blocks;
    const bool isTooDear =
        blocks > maxDecodedBytes / bytesPerBlock || m_picture.bytes.size() > maxBufferedBytes;
    if (m_isHeldAsAWhole && isTooDear)
        return false;
    const std::int64_t pixels = std::int64_t{m_picture.size.width()} * m_picture.size.height();
    return pixels <= maxPixels && m_blockVisits <= maxBlockVisits;
}

} // namespace Stemhaven
