#include "project/picture/PlainPicture.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <vector>

using Stemhaven::plainPicture;

namespace {

QByteArray bigEndian(quint32 number, int size) {
    QByteArray bytes;
    for (int i = size; i-- > 0;)
        bytes += static_cast<char>(number >> (8U * static_cast<unsigned>(i)));
    return bytes;
}

/// The pieces of a picture, to be exchanged one by one.
using Pieces = std::vector<QByteArray>;

QByteArray joined(const Pieces& pieces) {
    QByteArray bytes;
    for (const QByteArray& piece : pieces)
        bytes += piece;
    return bytes;
}

Pieces with(Pieces pieces, std::size_t position, const Pieces& added) {
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(position), added.begin(), added.end());
    return pieces;
}

Pieces exchanged(Pieces pieces, std::size_t position, const QByteArray& piece) {
    pieces[position] = piece;
    return pieces;
}

/// What is to become of a picture: nothing, or the plain one that it was made from.
struct Case {
    const char* name;
    Pieces pieces;
};

void expectRefused(const std::vector<Case>& cases) {
    for (const auto& [name, pieces] : cases)
        EXPECT_FALSE(plainPicture(joined(pieces))) << name;
}

void expectPlain(const std::vector<Case>& cases, const Pieces& plain) {
    for (const auto& [name, pieces] : cases) {
        const auto picture = plainPicture(joined(pieces));
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->bytes, joined(plain)) << name;
    }
}

// The reader leaves pixels and checksums to the decoder, so they are made up here.

QByteArray chunk(const QByteArray& type, const QByteArray& data = {}) {
    return bigEndian(static_cast<quint32>(data.size()), 4) + type + data + "crc.";
}

QByteArray header(quint32 width, quint32 height, char depth = 8, char colours = 6, char interlace = 0) {
    return chunk(
        "IHDR", bigEndian(width, 4) + bigEndian(height, 4) + depth + colours + '\0' + '\0' + interlace);
}

const QByteArray pngSignature("\x89PNG\r\n\x1A\n");

enum PngPosition { AtHeader = 1, AtPalette, AtTransparency, AtPixels, AtMorePixels, AtEnd, AfterEnd };

const Pieces png{pngSignature,       header(4, 3, 8, 3),      chunk("PLTE", QByteArray(768, 'p')),
                 chunk("tRNS", "t"), chunk("IDAT", "pixels"), chunk("IDAT", "more"),
                 chunk("IEND")};

QByteArray segment(int marker, const QByteArray& data) {
    return QByteArray("\xFF") + static_cast<char>(marker) +
        bigEndian(static_cast<quint32>(data.size()) + 2, 2) + data;
}

/// samplings: one number for each component, such as 0x22.
QByteArray frame(int marker, quint32 width, quint32 height, const QByteArray& samplings, char precision = 8) {
    QByteArray data =
        precision + bigEndian(height, 2) + bigEndian(width, 2) + static_cast<char>(samplings.size());
    for (int i = 0; i < samplings.size(); ++i)
        data += static_cast<char>(i + 1) + samplings.mid(i, 1) + '\0';
    return segment(marker, data);
}

QByteArray scan(const QByteArray& components) {
    QByteArray data(1, static_cast<char>(components.size()));
    for (const char component : components)
        data += component + QByteArray(1, '\0');
    return segment(0xDA, data + QByteArray("\0\x3F\0", 3));
}

enum JpegPosition { AtJfif = 1, AtTable, AtFrame, AtScan, AtData, AtEndOfImage };

const QByteArray entropyData("coded\xFF\0pixels", 13);
const Pieces jpeg{
    "\xFF\xD8",
    segment(0xE0, QByteArray("JFIF\0\1\1\0\0\1\0\1\0\0", 14)),
    segment(0xDB, "table"),
    frame(0xC0, 4, 3, "\x22\x11\x11"),
    scan("\1\2\3"),
    entropyData,
    "\xFF\xD9"};

Pieces progressive(quint32 width, quint32 height, const QByteArray& samplings, int scans = 1) {
    Pieces pieces = exchanged(jpeg, AtFrame, frame(0xC2, width, height, samplings));
    pieces[AtScan] = scan("\1");
    for (int i = 1; i < scans; ++i)
        pieces = with(pieces, AtScan, {scan("\1"), "x"});
    return pieces;
}

} // namespace

TEST(HostilePicture, ChunksThatNoPixelNeedsAreTakenOut) {
    expectPlain(
        {{"as it is", png},
         {"texts that unfold", with(png, AtPalette, Pieces(5000, chunk("zTXt", QByteArray("k\0\0", 3))))},
         {"a profile and an animation", with(png, AtPixels, {chunk("iCCP", "p"), chunk("acTL", "a")})},
         {"Exif at the end", with(png, AtEnd, {chunk("eXIf", "e"), chunk("tEXt")})},
         {"data behind the end", with(png, AfterEnd, {QByteArray(100'000, 'z'), chunk("IHDR")})}},
        png);
    expectPlain(
        {{"as it is", jpeg},
         {"Exif, profiles and comments",
          with(jpeg, AtTable, {segment(0xE1, "Exif"), segment(0xE2, "ICC_PROFILE"), segment(0xFE, "c")})},
         {"a thumbnail",
          with(jpeg, AtTable, {segment(0xE0, QByteArray("JFIF\0\1\1\0\0\1\0\1\x7F\x7F", 14) + "rgb")})},
         {"fill bytes", with(jpeg, AtScan, {QByteArray(9999, '\xFF')})},
         {"a second picture", with(jpeg, AtEndOfImage + 1, jpeg)}},
        jpeg);
}

TEST(HostilePicture, PngsThatAreNotUnderstoodAreRefused) {
    const QByteArray unnamed = chunk(QByteArray("ID\0T", 4), "pixels");
    expectRefused(
        {{"no chunk", {pngSignature}},
         {"text before the header", with(png, AtHeader, {chunk("tEXt")})},
         {"a second header", with(png, AtPalette, {png[AtHeader]})},
         {"a header cut short", exchanged(png, AtHeader, chunk("IHDR", "short"))},
         {"no width", exchanged(png, AtHeader, header(0, 3))},
         {"a height below zero", exchanged(png, AtHeader, header(1, 0x80000001))},
         {"a depth of five", exchanged(png, AtHeader, header(4, 3, 5, 0))},
         {"a palette of 16 bits", exchanged(png, AtHeader, header(4, 3, 16, 3))},
         {"colours of type one", exchanged(png, AtHeader, header(4, 3, 8, 1))},
         {"interlaced in a new way", exchanged(png, AtHeader, header(4, 3, 8, 6, 2))},
         {"too many pixels", exchanged(png, AtHeader, header(4097, 5120))},
         {"too many pixels of 16 bits", exchanged(png, AtHeader, header(4097, 2560, 16))},
         {"sides whose product overflows", exchanged(png, AtHeader, header(0x7FFFFFFF, 0x7FFFFFFF))},
         {"a palette of 257", exchanged(png, AtPalette, chunk("PLTE", QByteArray(771, 'p')))},
         {"a second palette", with(png, AtPalette, {png[AtPalette]})},
         {"transparency without end", exchanged(png, AtTransparency, chunk("tRNS", QByteArray(257, 't')))},
         {"a palette behind the pixels", with(png, AtEnd, {png[AtPalette]})},
         {"pixels in two places", with(png, AtMorePixels, {chunk("tIME")})},
         {"no pixels", {pngSignature, png[AtHeader], png[AtEnd]}},
         {"an unknown chunk that is needed", with(png, AtPixels, {chunk("FDAT", "pixels")})},
         {"a chunk without a name", exchanged(png, AtMorePixels, unnamed)},
         {"a chunk longer than the file", exchanged(png, AtEnd, bigEndian(1, 4) + "IENDcrc.")},
         {"a chunk of four gigabytes", exchanged(png, AtEnd, bigEndian(~0U, 4) + "IENDcrc.")},
         {"no end", exchanged(png, AtEnd, {})}});
}

TEST(HostilePicture, JpegsThatAreNotUnderstoodAreRefused) {
    const QByteArray otherFrame = frame(0xC2, 60'000, 60'000, "\x11\x11\x11");
    std::vector<Case> cases{
        {"no segment", {"\xFF\xD8"}},
        {"no scan", {"\xFF\xD8", jpeg[AtFrame], "\xFF\xD9"}},
        {"a restart marker with a length", with(jpeg, AtFrame, {segment(0xD0, otherFrame)})},
        {"a progressive frame behind the first", with(jpeg, AtScan, {otherFrame})},
        {"a frame behind a scan", with(jpeg, AtEndOfImage, {otherFrame})},
        {"a second beginning", with(jpeg, AtFrame, {jpeg[0]})},
        {"something between two segments", with(jpeg, AtFrame, {"x"})},
        {"a marker of no meaning", with(jpeg, AtFrame, {QByteArray("\xFF\1", 2)})},
        {"a segment shorter than its length", exchanged(jpeg, AtTable, QByteArray("\xFF\xDB\0\1", 4))},
        {"a segment that runs over the end", exchanged(jpeg, AtTable, "\xFF\xDB\xFF\xFF")},
        {"arithmetic coding", with(jpeg, AtFrame, {segment(0xCC, "aa")})},
        {"a height that comes later", with(jpeg, AtEndOfImage, {segment(0xDC, "hh")})},
        {"a scan before the frame", with(jpeg, AtFrame, {jpeg[AtScan], "x"})},
        {"a frame cut short", exchanged(jpeg, AtFrame, segment(0xC0, "short"))},
        {"twelve bits", exchanged(jpeg, AtFrame, frame(0xC1, 4, 3, "\x11\x11\x11", 12))},
        {"two components", exchanged(jpeg, AtFrame, frame(0xC0, 4, 3, "\x11\x11"))},
        {"no height", exchanged(jpeg, AtFrame, frame(0xC0, 4, 0, "\x11\x11\x11"))},
        {"sampled in no way", exchanged(jpeg, AtFrame, frame(0xC0, 4, 3, QByteArray("\x10\x11\x11")))},
        {"sampled five times", exchanged(jpeg, AtFrame, frame(0xC0, 4, 3, "\x51\x11\x11"))},
        {"a scan of no component", exchanged(jpeg, AtScan, scan(""))},
        {"a scan of an unknown component", exchanged(jpeg, AtScan, scan("\1\2\4"))},
        {"a scan of one component twice", exchanged(jpeg, AtScan, scan("\1\2\1"))},
        {"a second scan of a baseline frame", with(jpeg, AtScan, {scan("\1\2\3"), "x"})},
        {"65 scans", progressive(4, 3, "\x11\x11\x11", 65)},
        {"restarts without an interval", exchanged(jpeg, AtData, "x\xFF\xD0y")},
        {"cut short in a scan", {jpeg.begin(), jpeg.begin() + AtEndOfImage}},
        {"cut short in a marker", exchanged(jpeg, AtEndOfImage, "\xFF")},
    };
    for (const int marker : {0xC3, 0xC5, 0xC6, 0xC7, 0xC9, 0xCA, 0xCB, 0xCD, 0xCE, 0xCF, 0xF7})
        cases.push_back(
            {"an unknown process", exchanged(jpeg, AtFrame, frame(marker, 4, 3, "\x11\x11\x11"))});
    expectRefused(cases);
}

TEST(HostilePicture, CostIsBoundedByTheHeaders) {
    const auto baseline = [](quint32 width, quint32 height, const QByteArray& samplings) {
        return exchanged(jpeg, AtFrame, frame(0xC0, width, height, samplings));
    };
    Pieces restarts = with(jpeg, AtFrame, {segment(0xDD, "\1\1")});
    restarts[AtData + 1] = "x\xFF\xD0y";
    const std::tuple<const char*, Pieces, bool> cases[] = {
        {"one pass", baseline(20'000, 9000, "\x22\x11\x11"), true},
        {"one pass over too much", baseline(0xFFFF, 0xFFFF, "\x22\x11\x11"), false},
        {"one pass for each component", exchanged(baseline(20'000, 9000, "\x22\x11\x11"), AtScan, scan("\1")),
         false},
        {"a 6K screen in passes", progressive(6016, 3384, "\x11\x11\x11"), true},
        {"held as a whole", progressive(9152, 9153, "\x11\x11\x11"), false},
        {"few pixels in many blocks", progressive(65'000, 1, QByteArray("\x44\x14\x44\x44")), true},
        {"many blocks for few pixels", progressive(60'000, 1000, QByteArray("\x44\x44\x44\x44")), false},
        {"nine scans", progressive(8000, 8000, QByteArray("\x22\x11\x11"), 9), false},
        {"restarts", restarts, true},
        {"a 6K screen", exchanged(png, AtHeader, header(6016, 3384)), true},
    };
    for (const auto& [name, pieces, isAccepted] : cases)
        EXPECT_EQ(plainPicture(joined(pieces)).has_value(), isAccepted) << name;

    Pieces long8 = progressive(800, 800, "\x11\x11\x11");
    long8[AtData] = QByteArray(8 << 20, 'x');
    EXPECT_FALSE(plainPicture(joined(long8)));
    long8[AtFrame] = frame(0xC0, 800, 800, "\x11\x11\x11");
    long8[AtScan] = scan("\1\2\3");
    EXPECT_TRUE(plainPicture(joined(long8)));
}
