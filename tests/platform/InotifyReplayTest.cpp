#include "WatchedFolder.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/EventClock.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace Stemhaven {

namespace fs = std::filesystem;

using InotifyReplay = WatchedFolder;

namespace {

constexpr std::uint64_t margin = 2'000'000'000;

/// An id such that what was written before now is old, without waiting for the margin to pass.
std::uint64_t idAfterMargin() {
    return EventClock::systemTime() + margin;
}

} // namespace

/// Replay of a future id looks at everything, so "now" is moved by moving the margin: what is old is told
/// apart by the stamps themselves.
TEST_F(InotifyReplay, StampsTellEachPartOfABundleThatARecordIsMadeFrom) {
    const auto bundle = root() / "A.logicx";
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
    for (const auto& [part, counts] : parts) {
        const auto before = BundleStamp::of(bundle.string());
        const std::array<timespec, 2> times{{{1'000'000'000, 5}, {2'000'000'000, 7}}};
        ASSERT_EQ(utimensat(AT_FDCWD, (bundle / part).c_str(), times.data(), 0), 0);
        EXPECT_EQ(BundleStamp::of(bundle.string()) != before, counts) << part;
    }
    EXPECT_GE(BundleStamp::of(bundle.string()).newest, 2'000'000'000'000'000'007U);
}

TEST_F(InotifyReplay, TellsWhatChangedSinceAndAsksForASearch) {
    makeBundle(root() / "Old.logicx");
    makeBundle(root() / "Deep/Changed.logicx");
    for (const auto* name : {"Recorded.logicx", "SavedByAWrongClock.logicx", "WithoutInformation.logicx"}) {
        const auto bundle = root() / name;
        makeBundle(bundle);
        request().recordedTimes[QString::fromStdString(bundle.string())] =
            BundleStamp::of(bundle.string()).informationSeconds;
    }
    const auto aDayEarlier = fs::file_time_type::clock::now() - 24h;
    fs::last_write_time(root() / "SavedByAWrongClock.logicx/Resources/ProjectInformation.plist", aDayEarlier);
    fs::remove(root() / "WithoutInformation.logicx/Resources/ProjectInformation.plist");
    const auto since = idAfterMargin();
    // Later than since by what the file says of itself.
    const auto file = root() / "Deep/Changed.logicx/Alternatives/000/MetaData.plist";
    const auto later = static_cast<time_t>((since + margin) / 1'000'000'000);
    const std::array<timespec, 2> times{{{later, 0}, {later, 0}}};
    ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
    ASSERT_TRUE(waitUntil([&] { return EventClock::systemTime() > since; }));

    request().sinceEventID = since;
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitFor("Music", scan));
    const Flags expected{
        {"Music/Deep/Changed.logicx", modified},
        {"Music/SavedByAWrongClock.logicx", modified},
        {"Music", scan}};
    EXPECT_EQ(flags(), expected);
    EXPECT_EQ(fileID("Music/Deep/Changed.logicx", modified), inodeOf(root() / "Deep/Changed.logicx"));
    EXPECT_GT(events().front().eventID, since);
}

TEST_F(InotifyReplay, FromTheFutureOrAnotherSystemLooksAtEverything) {
    makeBundle(root() / "A.logicx");
    for (const std::uint64_t since : {std::uint64_t{12'345}, EventClock::systemTime() + 86'400 * margin}) {
        forgetEvents();
        request().sinceEventID = since;
        ASSERT_TRUE(start());
        ASSERT_TRUE(waitFor("Music", scan));
        EXPECT_TRUE(waitFor("Music/A.logicx", modified));
        EXPECT_GT(events().front().eventID, since);
    }
}

TEST_F(InotifyReplay, FromNowTellsNothing) {
    makeBundle(root() / "A.logicx");
    ASSERT_TRUE(start());
    EXPECT_EQ(settledFlags(), Flags{});
}

} // namespace Stemhaven
