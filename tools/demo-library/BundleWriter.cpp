#include "BundleWriter.h"

#include "Random.h"
#include "SongWords.h"
#include "plist/PropertyList.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace DemoLibrary {

namespace {

using Plist::Array;
using Plist::Dictionary;
using Plist::Value;

constexpr std::time_t hour = 3600;
constexpr int entriesOfSnapshot = 3; // the folder, MetaData.plist, ProjectData

std::vector<char> encode(const Dictionary& dictionary, bool binary) {
    std::vector<char> bytes;
    if (binary)
        Plist::writePlistBinary(bytes, dictionary);
    else
        Plist::writePlistXML(bytes, dictionary);
    return bytes;
}

std::string padded(int number, int digits) {
    return QStringLiteral("%1").arg(number, digits, 10, QLatin1Char('0')).toStdString();
}

/// Whole tempos are integers in the files, fractional ones reals.
Value tempoValue(double tempo) {
    if (tempo == std::floor(tempo))
        return static_cast<std::int64_t>(tempo);
    return tempo;
}

std::string recordingName(const Song& song, int index) {
    const auto& names = SongWords::recordings;
    const auto first = static_cast<std::size_t>(song.seed % names.size());
    const auto at = first + static_cast<std::size_t>(index);
    return std::string(names.at(at % names.size())) + "#" +
        padded(1 + index / static_cast<int>(names.size()), 2) + ".aif";
}

/// Noise: nobody parses these files.
std::vector<char> songData(std::uint64_t seed) {
    Random random(seed);
    std::vector<char> data(static_cast<std::size_t>(random.between(64, 256)));
    std::generate(data.begin(), data.end(), [&random] { return static_cast<char>(random.between(0, 255)); });
    return data;
}

} // namespace

/// What of a song there is room for.
struct BundleWriter::Contents {
    std::map<int, QString> alternatives;
    std::map<int, int> backups; // by alternative
    int recordings = 0;
};

void BundleWriter::write(const Song& song) {
    m_files.makeFolders(m_library + "/" + song.folder.toStdString());
    const std::string bundle = m_library + "/" + song.bundle().toStdString();
    const Contents contents = plan(song);

    m_files.makeFolder(bundle);
    writeInformation(bundle, song, contents);
    m_files.makeFolder(bundle + "/Alternatives");
    for (const auto& [number, name] : contents.alternatives)
        writeAlternative(bundle, song, contents, number);
    if (contents.recordings > 0)
        writeRecordings(bundle, song, contents);
    LibraryFiles::setModified(bundle, song.modified);
}

BundleWriter::Contents BundleWriter::plan(const Song& song) const {
    const int entriesOfAlternative = entriesOfSnapshot + (m_options.pictures ? 1 : 0);
    int room = m_options.entriesPerBundle - 3; // Resources and its list, Alternatives
    const auto take = [&room](int entries) {
        const bool fits = entries <= room;
        room -= fits ? entries : 0;
        return fits;
    };

    Contents contents;
    const int active = song.activeAlternative;
    contents.alternatives[active] = song.alternatives.at(active);
    room -= entriesOfAlternative;
    for (const auto& [number, name] : song.alternatives) {
        if (number != active && take(entriesOfAlternative))
            contents.alternatives[number] = name;
    }
    for (const auto& [number, name] : contents.alternatives) {
        const int wanted = number == active ? song.backups : song.backups / 2;
        int& backups = contents.backups[number];
        while (backups < wanted && take(entriesOfSnapshot + (backups == 0 ? 1 : 0)))
            ++backups;
    }
    contents.recordings = std::max(0, room - 2); // Media, Audio Files
    return contents;
}

void BundleWriter::writeInformation(const std::string& bundle, const Song& song, const Contents& contents) {
    Dictionary names;
    Dictionary patterns;
    for (const auto& [number, name] : contents.alternatives) {
        names[std::to_string(number)] = name.toStdString();
        patterns[std::to_string(number)] = number == 0 ? std::string("{PROJECT_NAME}") : name.toStdString();
    }
    const Dictionary information{
        {"ActiveVariant", std::int64_t{song.activeAlternative}},
        {"BundleVersion", std::int64_t{2}},
        {"HasProjectFolder", contents.recordings > 0},
        {"LastSavedFrom", song.logicVersion},
        {"VariantNames", names},
        {"VariantNamesV2", patterns},
    };
    m_files.makeFolder(bundle + "/Resources");
    m_files.writeFile(
        bundle + "/Resources/ProjectInformation.plist", encode(information, song.binary), song.modified);
}

void BundleWriter::writeAlternative(
    const std::string& bundle, const Song& song, const Contents& contents, int number) {
    Array recordings;
    for (int index = 0; index < contents.recordings; ++index)
        recordings.emplace_back("Audio Files/" + recordingName(song, index));
    const Dictionary facts{
        {"AudioFiles", recordings},
        {"BeatsPerMinute", tempoValue(song.tempo)},
        {"NumberOfTracks", std::int64_t{song.tracks}},
        {"SampleRate", std::int64_t{song.sampleRate}},
        {"SongGenderKey", song.mode},
        {"SongKey", song.key},
        {"SongSignatureDenominator", std::int64_t{song.signatureDenominator}},
        {"SongSignatureNumerator", std::int64_t{song.signatureNumerator}},
    };
    const std::vector<char> metaData = encode(facts, song.binary);
    const std::vector<char> projectData = songData(song.seed + static_cast<std::uint64_t>(number));
    const auto writeSnapshot = [&](const std::string& folder, std::time_t modified) {
        m_files.makeFolder(folder);
        m_files.writeFile(folder + "/MetaData.plist", metaData, modified);
        m_files.writeFile(folder + "/ProjectData", projectData, modified);
    };

    const std::string folder = bundle + "/Alternatives/" + padded(number, 3);
    const std::time_t saved =
        song.modified - (number == song.activeAlternative ? 0 : 50 * hour * (1 + number));
    writeSnapshot(folder, saved);
    if (m_options.pictures)
        m_files.writeFile(
            folder + "/WindowImage.jpg", m_pictures.picture(song.seed + static_cast<std::uint64_t>(number)),
            saved);

    // Older than the alternative: a newer backup would ask for a repair.
    const int backups = contents.backups.at(number);
    if (backups > 0)
        m_files.makeFolder(folder + "/Project File Backups");
    for (int backup = 0; backup < backups; ++backup)
        writeSnapshot(
            folder + "/Project File Backups/" + padded(backup, 2), saved - 2 * hour * (backups - backup));
}

void BundleWriter::writeRecordings(const std::string& bundle, const Song& song, const Contents& contents) {
    static const std::vector<char> silence{'F', 'O', 'R', 'M', 0, 0, 0, 4, 'A', 'I', 'F', 'F'};
    const std::string folder = bundle + "/Media/Audio Files";
    m_files.makeFolder(bundle + "/Media");
    m_files.makeFolder(folder);
    for (int index = 0; index < contents.recordings; ++index)
        m_files.writeFile(folder + "/" + recordingName(song, index), silence, song.created);
}

} // namespace DemoLibrary
