#include "WatchedFolder.h"
#include "platform/FileReplacement.h"

#include <algorithm>
#include <functional>

namespace Stemhaven {

namespace fs = std::filesystem;

namespace {

struct Change {
    const char* name;
    std::function<void()> act;
    Flags expected;
    /// A tree of which it is left open what is told about its inside: it grows or goes meanwhile.
    std::string open = {};
};

std::ostream& operator<<(std::ostream& stream, const Change& change) {
    return stream << change.name;
}

std::vector<Change> changes() {
    const std::string information = "Music/A.logicx/Resources/ProjectInformation.plist";
    const std::string alternative = "Music/A.logicx/Alternatives/000/";
    return {
        {"SavesAsADocumentProgramDoes",
         [=] { saveOver(alternative + "MetaData.plist"); },
         {{alternative + ".save-temp", created | modified | renamed},
          {alternative + "MetaData.plist", renamed}}},
        {"WritesAndDeletesPartsMediaAndOtherFiles",
         [=] {
             writeFile(information, "more");
             fs::remove(alternative + "MetaData.plist");
             writeFile(alternative + "ProjectData.wav");
             for (int i = 0; i < 200; ++i)
                 writeFile("Music/A.logicx/Media/Audio Files/" + std::to_string(i));
             writeFile("Music/notes.txt");
             fs::rename("Music/notes.txt", "Music/notes2.txt");
         },
         {{information, modified},
          {alternative + "MetaData.plist", removed},
          {alternative + "ProjectData.wav", created | modified}}},
        {"ChangesAttributesReadsLinksAndHidden",
         [=] {
             fs::permissions(information, fs::perms::owner_all);
             std::string text;
             std::ifstream(information) >> text;
             fs::create_directory_symlink("../Outside", "Music/Link");
             fs::create_directory_symlink("../Music", "Music/Loop");
             fs::create_directory_symlink("A.logicx", "Music/Link.tmp");
             fs::rename("Music/Link.tmp", "Music/Link.logicx");
             writeFile("Music/._A.logicx");
             makeBundle("Music/.F.logicx");
             fs::rename("Music/.F.logicx", "Music/.G.logicx");
         },
         {}},
        {"AddsAnAlternativeAndWritesIntoIt",
         [] {
             fs::create_directory("Music/A.logicx/Alternatives/001");
             writeFile("Music/A.logicx/Alternatives/001/MetaData.plist");
         },
         {{"Music/A.logicx/Alternatives/001", created}},
         "Music/A.logicx/Alternatives/001"},
        {"GivesAFolderABundlesName",
         [] { fs::rename("Music/B.tmp", "Music/B.logicx"); },
         {{"Music/B.tmp", renamed}, {"Music/B.logicx", renamed | created}}},
        {"ReplacesABundleByAFile",
         [] {
             fs::remove_all("Music/A.logicx");
             writeFile("Music/A.logicx");
         },
         {{"Music/A.logicx", removed | created}},
         "Music/A.logicx"},
        {"MakesABundleInThePlaceOfAMovedOne",
         [] {
             fs::rename("Music/A.logicx", "Music/Z.logicx");
             makeBundle("Music/A.logicx");
         },
         {{"Music/A.logicx", renamed | created}, {"Music/Z.logicx", renamed}},
         "Music/A.logicx"},
        {"MovesABundleOnAndIntoAnotherRoot",
         [] {
             fs::rename("Music/A.logicx", "Music/Y.logicx");
             fs::rename("Music/Y.logicx", "Archive/Z.logicx");
         },
         {{"Music/A.logicx", renamed}, {"Music/Y.logicx", renamed}, {"Archive/Z.logicx", renamed}}},
        {"RenamesAFolderAndMakesABundleInIt",
         [] {
             fs::rename("Music/Songs", "Music/Album");
             makeBundle("Music/Album/New/E.logicx");
         },
         {{"Music/Songs", renamed},
          {"Music/Album", renamed},
          {"Music/Album/New", created},
          {"Music/Album/New/E.logicx", created}},
         "Music/Album/New/E.logicx"},
        {"MovesAFolderOut", [] { fs::rename("Music/Songs", "Outside/Songs"); }, {{"Music/Songs", renamed}}},
        {"MovesAFolderOutAndBack",
         [] {
             fs::rename("Music/Songs", "Outside/Songs");
             fs::rename("Outside/Songs", "Music/Back");
         },
         {{"Music/Songs", renamed},
          {"Music/Back", renamed | created},
          {"Music/Back/Deep/C.logicx", created}}},
        {"MovesAFolderIn",
         [] { fs::rename("Outside/Old", "Music/Old"); },
         {{"Music/Old", renamed | created}, {"Music/Old/D.logicx", created}}},
        {"HidesAFolder", [] { fs::rename("Music/Songs", "Music/.Songs"); }, {{"Music/Songs", renamed}}},
        {"ShowsAHiddenBundle",
         [] { fs::rename("Music/.H.logicx", "Music/H.logicx"); },
         {{"Music/H.logicx", renamed | created}}},
        {"MakesAndRenamesAtOnce",
         [] {
             fs::create_directory("Music/Y.logicx");
             fs::rename("Music/Y.logicx", "Music/Z.logicx");
         },
         // Renamed alone never makes a record.
         {{"Music/Y.logicx", created | renamed}, {"Music/Z.logicx", created | renamed}}},
    };
}

/// A second root, and a place that is not watched.
class InotifyMoves : public WatchedFolder {
protected:
    InotifyMoves() {
        fs::create_directory("Archive");
        fs::create_directory("Outside");
        request().roots.append(at("Archive"));
    }
};

class Changes : public InotifyMoves, public testing::WithParamInterface<Change> {};

} // namespace

TEST_P(Changes, ComeAsTheirEventsAndEachBundleIsWatchedWhereItIs) {
    const auto& [name, act, expected, open] = GetParam();
    for (const auto* bundle :
         {"Music/A.logicx", "Music/B.tmp", "Music/Songs/Deep/C.logicx", "Music/.Hidden/E.logicx",
          "Music/.H.logicx", "Outside/Old/D.logicx"})
        makeBundle(bundle);
    std::map<std::string, std::uint64_t> before;
    for (const auto& [path, flags] : expected)
        before[path] = inodeOf(path);
    ASSERT_TRUE(start());
    act();

    Flags found = settledFlags();
    std::erase_if(found, [&open = open](const auto& entry) { return entry.first.starts_with(open + '/'); });
    EXPECT_EQ(found, expected);

    // Where something went from and where it came to, it has its inode. Parts of bundles are told without
    // one.
    const auto isToldOf = [all = events(), this](const std::string& path, std::uint64_t inode) {
        return std::any_of(all.begin(), all.end(), [&](const FileEvent& event) {
            return event.path == at(path) && event.fileID == inode;
        });
    };
    for (const auto& [path, flags] : expected) {
        if (path.find(".logicx/") != std::string::npos)
            continue;
        EXPECT_TRUE((flags & renamed) == 0 || before[path] == 0 || isToldOf(path, before[path])) << path;
        EXPECT_TRUE(!fs::is_directory(path) || isToldOf(path, inodeOf(path))) << path;
    }
    expectAllFollowed();
}

INSTANTIATE_TEST_SUITE_P(
    Inotify, Changes, testing::ValuesIn(changes()),
    [](const testing::TestParamInfo<Change>& change) { return std::string(change.param.name); });

TEST_F(InotifyMoves, WhatWasSavedJustBeforeAMoveIsToldAtTheNewPathALatencyLater) {
    makeBundle("Music/Songs/A.logicx");
    request().latency = 2000ms;
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(start());
    settle();

    writeFile("Music/Songs/A.logicx/Resources/ProjectInformation.plist", "more");
    fs::rename("Music/Songs", "Music/Album");
    EXPECT_TRUE(waitFor("Music/Album/A.logicx/Resources/ProjectInformation.plist", modified));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, request().latency);
}

TEST_F(InotifyMoves, NothingOfATreeDroppedInAtOnceIsLostWhateverItsName) {
    ASSERT_TRUE(start());
    std::vector<std::string> bundles{
        "Music/" + std::string(248, 'x') + ".logicx", "Music/a\nb \"%1' ü.logicx"};
    for (int i = 0; i < 60; ++i)
        bundles.push_back(
            "Music/Year" + std::to_string(i % 3) + '/' + std::to_string(i) + "/Deep/Song.logicx");
    for (const auto& bundle : bundles)
        makeBundle(bundle);
    // Moved into a folder that is made in the same breath.
    fs::create_directory("Music/Sorted");
    fs::rename(bundles.back(), "Music/Sorted/Song.logicx");
    bundles.pop_back();

    auto found = settledFlags();
    EXPECT_TRUE(found.contains("Music/Sorted/Song.logicx"));
    for (const auto& bundle : bundles)
        EXPECT_NE(found[bundle] & created, 0U) << bundle;
    expectAllFollowed();
}

TEST_F(InotifyMoves, TheProgramsOwnFilesAppearAtOnceAndAreToldByTheirName) {
    makeBundle("Music/A.logicx");
    ASSERT_TRUE(start());
    const std::string note = "Music/A.logicx/Resources/Stemhaven.plist";
    const OpenFolder folder("Music/A.logicx/Resources");
    std::vector<FileReplacement> files;
    files.emplace_back(folder, "Stemhaven.plist");
    ASSERT_TRUE(files[0].write("note") && FileReplacement::putInPlace(files));
    auto found = settledFlags();
    EXPECT_EQ(found[note], renamed);
    EXPECT_EQ(found.size(), 2U);
    for (const auto& [path, flags] : found)
        EXPECT_TRUE(path.starts_with(note)) << path;
}

} // namespace Stemhaven
