#include "plist/PropertyList.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#ifdef STEMHAVEN_BENCH_LIBPLIST
#include <plist/plist.h>
#endif

namespace {

Plist::Array texts(const std::string& stem, int count) {
    Plist::Array list;
    for (int i = 0; i < count; ++i)
        list.emplace_back(stem + std::to_string(i));
    return list;
}

Plist::Array markers() {
    Plist::Array list;
    for (int i = 0; i < 8; ++i) {
        list.emplace_back(Plist::Dictionary{
            {"Name", std::string("Verse ") + std::to_string(i)},
            {"Position", std::int64_t{38400} * i},
            {"Length", 15360.5 * i},
            {"Locked", i % 2 == 0},
        });
    }
    return list;
}

// Of the shape and size of an alternative's MetaData.plist: some sixty keys, most of them numbers.
Plist::Value typicalMetaData() {
    Plist::Dictionary root{
        {"BeatsPerMinute", 92.5},
        {"NumberOfTracks", std::int64_t{48}},
        {"SampleRate", std::int64_t{44100}},
        {"SongKey", std::string("C#")},
        {"SongGenderKey", std::string("minor")},
        {"SongSignatureNumerator", std::int64_t{4}},
        {"SongSignatureDenominator", std::int64_t{4}},
        {"LastOpenedWith", std::string("Logic Pro 10.7.9 (5762)")},
        {"Markers", markers()},
        {"PlugInNames", texts("Channel Strip Plug-in No. ", 12)},
        {"AudioFiles", texts("Media/Audio Files/Take ", 12)},
        {"UnusedAudioFiles", Plist::Array{}},
    };
    const auto add = [&root](std::initializer_list<const char*> keys, const auto& valueOf) {
        std::int64_t number = 0;
        for (const char* key : keys)
            root.emplace(key, valueOf(number++));
    };
    add({"FrameRateIndex",
         "SurroundFormatIndex",
         "SurroundModeIndex",
         "Version",
         "ScoreSets",
         "Revision",
         "BitDepth",
         "DisplayOffset",
         "LoopStart",
         "LoopEnd",
         "Transpose",
         "CountIn",
         "BufferSize",
         "AutosaveNumber",
         "WindowSet",
         "ScreenSet",
         "UndoSteps",
         "ChannelStrips",
         "Sends",
         "Buses"},
        [](std::int64_t number) { return std::int64_t{1} << number; });
    add({"MasterVolume", "Swing", "HighestTempo", "LowestTempo", "Headroom", "Loudness", "PreRoll",
         "PostRoll"},
        [](std::int64_t number) { return 0.3 * static_cast<double>(number); });
    add({"HasGrid", "IsTimeCodeBased", "FollowsTempo", "KeepsUndo", "UsesMixer", "ShowsNotes"},
        [](std::int64_t number) { return number % 2 == 0; });
    add({"Title", "Artist", "Composer", "Album", "Comment", "Genre", "Copyright", "Engineer", "Studio",
         "Template", "VideoPath", "TuningName", "Keyboard", "Environment"},
        [](std::int64_t number) {
            return "Some words about this song, of the kind No. " + std::to_string(number);
        });
    return root;
}

const std::vector<char>& typicalFile() {
    static const std::vector<char> file = [] {
        std::vector<char> bytes;
        Plist::writePlistBinary(bytes, typicalMetaData());
        return bytes;
    }();
    return file;
}

void countBytes(benchmark::State& state) {
    state.SetBytesProcessed(
        static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(typicalFile().size()));
}

void decodeStemhaven(benchmark::State& state) {
    const std::vector<char>& file = typicalFile();
    for ([[maybe_unused]] const auto _ : state) {
        Plist::Value value;
        Plist::readPlist(file.data(), static_cast<std::int64_t>(file.size()), value);
        benchmark::DoNotOptimize(value);
    }
    countBytes(state);
}

void encodeStemhaven(benchmark::State& state) {
    const Plist::Value value = typicalMetaData();
    for ([[maybe_unused]] const auto _ : state) {
        std::vector<char> bytes;
        Plist::writePlistBinary(bytes, value);
        benchmark::DoNotOptimize(bytes);
    }
    countBytes(state);
}

BENCHMARK(decodeStemhaven)->Name("Decode/Stemhaven");
BENCHMARK(encodeStemhaven)->Name("Encode/Stemhaven");

#ifdef STEMHAVEN_BENCH_LIBPLIST

plist_t decodedByLibplist() {
    const std::vector<char>& file = typicalFile();
    plist_t plist = nullptr;
    plist_from_bin(file.data(), static_cast<std::uint32_t>(file.size()), &plist);
    return plist;
}

void decodeLibplist(benchmark::State& state) {
    for ([[maybe_unused]] const auto _ : state) {
        plist_t plist = decodedByLibplist();
        benchmark::DoNotOptimize(plist);
        if (plist == nullptr)
            state.SkipWithError("libplist does not read the file");
        plist_free(plist);
    }
    countBytes(state);
}

void encodeLibplist(benchmark::State& state) {
    plist_t plist = decodedByLibplist();
    for ([[maybe_unused]] const auto _ : state) {
        char* bytes = nullptr;
        std::uint32_t size = 0;
        plist_to_bin(plist, &bytes, &size);
        benchmark::DoNotOptimize(bytes);
        plist_to_bin_free(bytes);
    }
    plist_free(plist);
    countBytes(state);
}

BENCHMARK(decodeLibplist)->Name("Decode/libplist");
BENCHMARK(encodeLibplist)->Name("Encode/libplist");

#endif

} // namespace

/// With one argument that is no option: writes the file that the cases read there, for other readers of it.
int main(int argc, char** argv) {
    if (argc == 2 && argv[1][0] != '-') {
        std::ofstream(argv[1], std::ios::binary)
            .write(typicalFile().data(), static_cast<std::streamsize>(typicalFile().size()));
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
