#include "BundleFiles.h"

#include "plist/PropertyList.h"

#include <chrono>
#include <cstdint>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace Storm {

namespace fs = std::filesystem;

namespace {

constexpr const char* tagKey = "StormTag";

using FileWriter = std::function<void(const fs::path&, const std::vector<char>&)>;

std::vector<char> encoded(const Plist::Dictionary& list) {
    std::vector<char> bytes;
    Plist::writePlistBinary(bytes, list);
    return bytes;
}

Plist::Dictionary information(int tag) {
    return {
        {"ActiveVariant", std::int64_t{0}},
        {"BundleVersion", std::int64_t{2}},
        {"LastSavedFrom", std::string("Logic Pro 10.8.1 (6017)")},
        {"VariantNamesV2", Plist::Dictionary{{"0", std::string("{PROJECT_NAME}")}}},
        {tagKey, std::int64_t{tag}},
    };
}

Plist::Dictionary metaData(double tempo) {
    return {
        {"BeatsPerMinute", tempo},
        {"NumberOfTracks", std::int64_t{8}},
        {"SampleRate", std::int64_t{48000}},
        {"SongGenderKey", std::string("minor")},
        {"SongKey", std::string("A")},
        {"SongSignatureDenominator", std::int64_t{4}},
        {"SongSignatureNumerator", std::int64_t{4}},
    };
}

void writeFiles(const fs::path& bundle, const BundleContents& contents, const FileWriter& write) {
    const fs::path alternative = bundle / "Alternatives/000";
    write(alternative / "ProjectData", std::vector<char>(2048, '\x23'));
    write(alternative / "MetaData.plist", encoded(metaData(contents.tempo)));
    write(bundle / "Resources/ProjectInformation.plist", encoded(information(contents.tag)));
}

void writeInPlace(const fs::path& file, const std::vector<char>& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream)
        throw std::runtime_error("Could not write " + file.string());
}

} // namespace

void writeBundle(const fs::path& bundle, const BundleContents& contents) {
    writeFiles(bundle, contents, [](const fs::path& file, const std::vector<char>& bytes) {
        fs::create_directories(file.parent_path());
        writeInPlace(file, bytes);
    });
}

void writeForeignNote(const fs::path& bundle, std::int64_t recordId) {
    writeInPlace(
        bundle / "Resources/Stemhaven.plist",
        encoded({{"project_id", recordId}, {"SUFID", std::string("4242-4242424242")}}));
    // A record and a bundle that were saved in the same second pass for the same song.
    constexpr auto age = std::chrono::hours(24 * 1000);
    for (const auto* list : {"Alternatives/000/MetaData.plist", "Resources/ProjectInformation.plist"})
        fs::last_write_time(bundle / list, fs::file_time_type::clock::now() - age);
}

void saveBundle(const fs::path& bundle, const BundleContents& contents) {
    writeFiles(bundle, contents, [](const fs::path& file, const std::vector<char>& bytes) {
        const fs::path unfinished = file.string() + ".sb-storm";
        writeInPlace(unfinished, bytes);
        fs::rename(unfinished, file);
    });
}

} // namespace Storm
