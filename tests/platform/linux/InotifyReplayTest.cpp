#include "WatchedFolder.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/EventClock.h"

#include <chrono>
#include <cstring>

namespace Stemhaven {

namespace fs = std::filesystem;

using InotifyReplay = WatchedFolder;

namespace {

constexpr std::uint64_t margin = 2'000'000'000;

} // namespace

TEST_F(InotifyReplay, StampsTellEachPartOfABundleThatARecordIsMadeFrom) {
    const fs::path bundle = "Music/A.logicx";
    makeBundle(bundle);
    const std::vector<std::pair<std::string, bool>> parts{
        {".", true},
        {"Resources", false},
        {"Resources/ProjectInformation.plist", true},
        {"Alternatives", true},
        {"Alternatives/000", true},
        {"Alternatives/000/MetaData.plist", true},
        {"Alternatives/000/ProjectData", false},
        {"Media/Audio Files", false},
    };
    const std::chrono::sys_time<std::chrono::nanoseconds> moment{2'000'000'000'000'000'007ns};
    for (const auto& [part, counts] : parts) {
        const auto before = BundleStamp::of(bundle);
        fs::last_write_time(bundle / part, std::chrono::file_clock::from_sys(moment));
        EXPECT_EQ(BundleStamp::of(bundle) != before, counts) << part;
    }
    EXPECT_GE(BundleStamp::of(bundle).newest, 2'000'000'000'000'000'007U);
}

TEST_F(InotifyReplay, TellsWhatChangedSinceAndAsksForASearch) {
    const fs::path information = "Resources/ProjectInformation.plist";
    request().roots.append(at("Net"));
    const auto now = fs::file_time_type::clock::now();
    Flags expected;
    QHash<QString, FileWatchRequest::RecordedTimes> recorded;
    for (const std::string root : {"Music", "Net"}) {
        const fs::path folder(root);
        makeBundle(folder / "Old.logicx");
        makeBundle(folder / "Deep/Changed.logicx");
        for (const auto* name : {"Recorded.logicx", "SavedByAWrongClock.logicx", "NoInformation.logicx"}) {
            makeBundle(folder / name);
            recorded[at(folder / name)] = {BundleStamp::of(folder / name).informationSeconds, 0};
        }
        // Changed, and read after that.
        makeBundle(folder / "ReadSince.logicx");
        fs::last_write_time(folder / "ReadSince.logicx/Alternatives/000/MetaData.plist", now + 1h);
        recorded[at(folder / "ReadSince.logicx")] = {
            BundleStamp::of(folder / "ReadSince.logicx").informationSeconds,
            static_cast<std::int64_t>(BundleStamp::of(folder / "ReadSince.logicx").newest + margin)};
        fs::last_write_time(folder / "Deep/Changed.logicx/Alternatives/000/MetaData.plist", now + 1h);
        fs::last_write_time(folder / "SavedByAWrongClock.logicx" / information, now - 24h);
        fs::remove(folder / "NoInformation.logicx" / information);
        expected[root] = scan;
        expected[root + "/Deep/Changed.logicx"] = modified;
        expected[root + "/SavedByAWrongClock.logicx"] = modified;
    }
    request().recordedTimes = [&](const QString& path) {
        return recorded.contains(path) ? std::optional(recorded[path]) : std::nullopt;
    };
    // So late that all but what is dated later is old.
    request().sinceEventID = EventClock::systemTime() + margin;
    ASSERT_TRUE(waitUntil([&] { return EventClock::systemTime() > request().sinceEventID; }));

    CallsWithoutNet calls;
    ASSERT_TRUE(start({calls}));
    ASSERT_TRUE(waitFor("Net", scan));
    EXPECT_EQ(flags(), expected);
    EXPECT_EQ(fileID("Music/Deep/Changed.logicx", modified), inodeOf("Music/Deep/Changed.logicx"));
    EXPECT_GT(events().front().eventID, request().sinceEventID);
}

TEST_F(InotifyReplay, FromTheFutureOrAnotherSystemLooksAtEverything) {
    makeBundle("Music/A.logicx");
    for (const std::uint64_t since : {std::uint64_t{12'345}, EventClock::systemTime() + 86'400 * margin}) {
        forgetEvents();
        request().sinceEventID = since;
        ASSERT_TRUE(start());
        ASSERT_TRUE(waitFor("Music", scan));
        EXPECT_TRUE(waitFor("Music/A.logicx", modified));
        EXPECT_GT(events().front().eventID, since);
    }
}

} // namespace Stemhaven
