#include "platform/linux/EventCoalescer.h"

#include <gtest/gtest.h>

#include <chrono>

namespace Stemhaven {

using namespace std::chrono_literals;

TEST(EventClock, NeverGoesBackNorStandsStill) {
    std::uint64_t wall = 5'000;
    EventClock clock([&] { return wall; });

    EXPECT_EQ(clock.next(), 5'000U);
    EXPECT_EQ(clock.next(), 5'001U);
    wall = 10;
    EXPECT_EQ(clock.next(), 5'002U);
    clock.passBeyond(9'000);
    EXPECT_EQ(clock.next(), 9'001U);
    wall = 20'000;
    EXPECT_EQ(clock.next(), 20'000U);

    wall = 0;
    EventClock withoutTime([&] { return wall; });
    EXPECT_EQ(withoutTime.next(), 1U);
}

TEST(EventCoalescer, MakesOneEventOfAStormAndKeepsTheOrderOfWhatCameLast) {
    EventCoalescer coalescer(EventClock::instance(), 3s);
    for (int i = 0; i < 1'000; ++i)
        coalescer.add("/a.logicx/Resources/x", 0, FileEvent::ItemModified);
    coalescer.add("/b.logicx", 7, FileEvent::ItemRenamed);
    coalescer.add("/b.logicx", 8, FileEvent::ItemCreated);
    coalescer.add("/a.logicx/Resources/x", 0, FileEvent::ItemCreated);

    const auto batch = coalescer.take();
    ASSERT_EQ(batch.size(), 3);
    EXPECT_EQ(batch[0].fileID, 7U);
    EXPECT_EQ(batch[1].fileID, 8U);
    EXPECT_EQ(batch[2].path, QStringLiteral("/a.logicx/Resources/x"));
    EXPECT_EQ(batch[2].flags, std::uint32_t{FileEvent::ItemModified | FileEvent::ItemCreated});
    EXPECT_LT(batch[0].eventID, batch[1].eventID);
    EXPECT_LT(batch[1].eventID, batch[2].eventID);
}

TEST(EventCoalescer, IsPromptAfterAQuietTimeAndThenOnceALatency) {
    EventCoalescer coalescer(EventClock::instance(), 3s);
    EXPECT_FALSE(coalescer.due());
    coalescer.add("/a", 1, FileEvent::ItemModified);
    EXPECT_LT(*coalescer.due(), EventCoalescer::Clock::now() + 1s);
    coalescer.take();
    EXPECT_FALSE(coalescer.due());
    coalescer.add("/a", 1, FileEvent::ItemModified);
    EXPECT_GT(*coalescer.due(), EventCoalescer::Clock::now() + 1s);
}

} // namespace Stemhaven
