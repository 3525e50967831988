#include "plist/ListBytes.h"
#include "program/Profile.h"
#include "support/TestBundle.h"
#include "support/Waiting.h"

#include <QFile>
#include <QImage>
#include <QImageWriter>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>

namespace {

constexpr std::size_t largestList = 4 << 20;

std::string text(const std::string& characters) {
    return "\x5F\x12" + bigEndian(characters.size(), 4) + characters;
}

std::string repeated(const std::string& text, std::size_t size) {
    std::string bytes;
    while (bytes.size() < size)
        bytes += text;
    return bytes;
}

/// A dictionary of a bundle's entries, each of which is one array of count references to the same object.
std::string sharing(std::uint64_t count, const std::string& object, std::size_t size) {
    ListBytes list{.offsetSize = 4};
    list.objects = {
        "\xD2\x01\x02\x03\x03", "\x57SongKey", text("LastSavedFrom").replace(0, 6, "\x5D"),
        "\xAF\x12" + bigEndian(count, 4) + std::string(count, '\4'), object};
    const std::size_t length = list.bytes().size() + 10;
    if (length < size)
        list.objects.push_back(text(std::string(size - length, 'x')));
    return list.bytes();
}

std::string longText() {
    return "<plist><dict><key>LastSavedFrom</key><string>" + std::string(largestList - 200, 'x') +
        "</string><key>SUFID</key><string>x</string></dict></plist>";
}

/// Four texts of 60 MB in a picture of 200 KB.
void writePictureOfTexts(const QString& file) {
    QImage image(64, 40, QImage::Format_RGB32);
    image.fill(Qt::darkGray);
    const QString text(60'000'000, u'x');
    for (const char* key : {"a", "b", "c", "d"})
        image.setText(key, text);
    ASSERT_TRUE(QImageWriter(file, "png").write(image));
}

/// The most memory that a program started by this process had, in MiB.
long peakMemoryOfPrograms() {
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    return usage.ru_maxrss >> 10;
}

} // namespace

TEST(HostileBundles, CostLittleMemoryAndLeaveOthersAlone) {
    // What is freed would count as taken for a while.
    qputenv("ASAN_OPTIONS", "quarantine_size_mb=1");
    Profile profile;
    profile.recordRatedSong();
    const long before = peakMemoryOfPrograms();

    const std::pair<const char*, std::string> lists[] = {
        {"one text often", sharing(63, text(std::string(20 << 20, 'x')), 0)},
        {"empty dictionaries", sharing(900'000, "\xD0", largestList)},
        {"elements", "<plist><array>" + repeated("<dict/>", largestList - 100) + "</array></plist>"},
        {"elements without end", repeated("<a>x", largestList - 100)},
        {"a long text", longText()},
        {"more than a list may have", std::string(3 * largestList, ' ') + "<plist><dict/></plist>"},
    };
    const std::filesystem::path folder = profile.projects().toStdString();
    for (const auto& [name, bytes] : lists) {
        const std::filesystem::path bundles[] = {
            folder / "information" / (std::string(name) + ".logicx"),
            folder / "metadata" / (std::string(name) + ".logicx")};
        const char* const files[] = {"Resources/ProjectInformation.plist", "Alternatives/000/MetaData.plist"};
        for (int i = 0; i < 2; ++i) {
            TestBundle().write(bundles[i]);
            for (const char* file : {files[i], "Resources/Stemhaven.plist"})
                std::ofstream(bundles[i] / file, std::ios::binary) << bytes;
        }
    }
    writePictureOfTexts(profile.projects() + "/Song.logicx/Alternatives/000/WindowImage.jpg");

    profile.oweSearch();
    profile.start();
    EXPECT_TRUE(waitUntil([&] { return !profile.searchIsOwed(); }));
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
    ASSERT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 0) << profile.output().toStdString();
    // Two to four times what the program takes without sanitizers. Each of these could cost more than that.
    EXPECT_LT(peakMemoryOfPrograms() - before, 1000);
    EXPECT_EQ(profile.rows("SELECT name, star_rating FROM projects"), QStringList("Song|4"));
}
