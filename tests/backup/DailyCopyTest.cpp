#include "backup/DailyCopy.h"

#include "BackupProfile.h"
#include "backup/DatabaseCopies.h"
#include "support/Waiting.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Stemhaven;

TEST(DailyCopy, IsMadeOnceWhenTheCatalogueIsAtRest) {
    BackupProfile profile;
    profile.fill("first");
    bool isQuiet = false;
    int asked = 0;
    {
        const DailyCopy daily(
            profile.live(),
            [&] {
                ++asked;
                return isQuiet;
            },
            std::chrono::milliseconds(10));
        const DatabaseCopies copies(profile.live());
        ASSERT_TRUE(waitUntil([&] { return asked > 2; }));
        EXPECT_TRUE(copies.all().isEmpty());
        isQuiet = true;
        {
            // Held by an export or import, which it must not wait for either.
            const std::lock_guard lock(liveFilesMutex());
            asked = 0;
            ASSERT_TRUE(waitUntil([&] { return asked > 4; }));
            EXPECT_TRUE(copies.all().isEmpty());
        }
        ASSERT_TRUE(waitUntil([&] { return !copies.all().isEmpty(); }));
        BackupProfile::run(profile.live().mainDatabase, {BackupProfile::project("second")});
        asked = 0;
        ASSERT_TRUE(waitUntil([&] { return asked > 5; }));
    }
    EXPECT_EQ(DatabaseCopies(profile.live()).all().size(), 1);
}
