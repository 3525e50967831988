#include "WatchedFolder.h"
#include "platform/linux/BundleStamp.h"
#include "platform/linux/EventClock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <cstring>

namespace Stemhaven {

namespace fs = std::filesystem;

using InotifyReplay = WatchedFolder;

namespace {

constexpr std::uint64_t margin = 2'000'000'000;

/// An id such that what was written before now is old, without waiting for the margin to pass.
std::uint64_t idAfterMargin() {
    return EventClock::systemTime() + margin;
}

class NoEventsFromNet : public InotifyCalls {
public:
    bool tellsEvents(const char* path) override { return std::strstr(path, "Net") == nullptr; }
};

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
    const fs::path information = "Resources/ProjectInformation.plist";
    request().roots.append(at("Net"));
    Flags expected;
    for (const std::string root : {"Music/", "Net/"}) {
        makeBundle(root + "Old.logicx");
        makeBundle(root + "Deep/Changed.logicx");
        for (const auto* name : {"Recorded.logicx", "SavedByAWrongClock.logicx", "NoInformation.logicx"}) {
            makeBundle(root + name);
            request().recordedTimes[at(root + name)] = BundleStamp::of(root + name).informationSeconds;
        }
        const auto aDayEarlier = fs::file_time_type::clock::now() - 24h;
        fs::last_write_time(fs::path(root + "SavedByAWrongClock.logicx") / information, aDayEarlier);
        fs::remove(fs::path(root + "NoInformation.logicx") / information);
        expected[root.substr(0, root.size() - 1)] = scan;
        expected[root + "Deep/Changed.logicx"] = modified;
        expected[root + "SavedByAWrongClock.logicx"] = modified;
    }
    const auto since = idAfterMargin();
    // Later than since by what the file says of itself.
    const auto later = static_cast<time_t>((since + margin) / 1'000'000'000);
    const std::array<timespec, 2> times{{{later, 0}, {later, 0}}};
    for (const std::string root : {"Music/", "Net/"}) {
        const auto file = root + "Deep/Changed.logicx/Alternatives/000/MetaData.plist";
        ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
    }
    ASSERT_TRUE(waitUntil([&] { return EventClock::systemTime() > since; }));

    request().sinceEventID = since;
    NoEventsFromNet calls;
    ASSERT_TRUE(start({calls, 5000ms}));
    ASSERT_TRUE(waitFor("Net", scan));
    EXPECT_EQ(flags(), expected);
    EXPECT_EQ(fileID("Music/Deep/Changed.logicx", modified), inodeOf("Music/Deep/Changed.logicx"));
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
