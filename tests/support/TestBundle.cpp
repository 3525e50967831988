#include "support/TestBundle.h"

#include "plist/PropertyList.h"

#include <fstream>
#include <stdexcept>

namespace {

void writeBytes(const std::filesystem::path& file, const std::vector<char>& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream)
        throw std::runtime_error("Could not write " + file.string());
}

} // namespace

TestBundle::TestBundle(std::int64_t tempo)
    : information{{"ActiveVariant", std::int64_t{0}}, {"BundleVersion", std::int64_t{2}}, {"HasProjectFolder", false}, {"LastSavedFrom", std::string("Logic Pro 10.8.1 (6017)")}, {"VariantNamesV2", Plist::Dictionary{{"0", std::string("{PROJECT_NAME}")}}}},
      metaData{
          {"BeatsPerMinute", tempo},
          {"NumberOfTracks", std::int64_t{8}},
          {"SampleRate", std::int64_t{48000}},
          {"SongGenderKey", std::string("minor")},
          {"SongKey", std::string("A")},
          {"SongSignatureDenominator", std::int64_t{4}},
          {"SongSignatureNumerator", std::int64_t{3}}} {}

void TestBundle::write(const std::filesystem::path& bundle) const {
    const std::filesystem::path alternativeFolder = bundle / "Alternatives" / alternative;
    writeList(bundle / "Resources/ProjectInformation.plist", information, form);
    writeList(alternativeFolder / "MetaData.plist", metaData, form);
    writeBytes(alternativeFolder / "ProjectData", std::vector<char>(512, '\x23'));
}

void TestBundle::writeList(const std::filesystem::path& file, const Plist::Value& root, Form form) {
    std::vector<char> bytes;
    if (form == Form::Binary)
        Plist::writePlistBinary(bytes, root);
    else
        Plist::writePlistXML(bytes, root);
    writeBytes(file, bytes);
}
