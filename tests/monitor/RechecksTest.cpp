#include "monitor/Rechecks.h"

#include "support/Waiting.h"

#include <QStringList>

#include <gtest/gtest.h>

using Stemhaven::Rechecks;

TEST(Rechecks, LookOnceMoreAtTheUnreadableAndUntilItAnswersAtTheDatabase) {
    QStringList checked;
    Rechecks* self = nullptr;
    int failuresLeft = 3;
    Rechecks rechecks(std::chrono::milliseconds(1), [&](const QString& path) {
        checked.append(path);
        if (path == "damaged")
            self->bundleUnreadable(path);
        else if (path == "locked" && --failuresLeft > 0)
            self->databaseFailed(path);
        else
            self->bundleWritten(path);
    });
    self = &rechecks;

    rechecks.bundleUnreadable("damaged");
    rechecks.bundleUnreadable("copied");
    ASSERT_TRUE(waitUntil([&] { return checked.size() == 2; }));
    rechecks.databaseFailed("locked");
    ASSERT_TRUE(waitUntil([&] { return failuresLeft == 0; }));
    EXPECT_EQ(checked.count("damaged"), 1);
    EXPECT_EQ(checked.count("copied"), 1);
    EXPECT_EQ(checked.count("locked"), 3);

    // Unreadable again after it was written: it gets its second chance anew.
    rechecks.bundleUnreadable("copied");
    ASSERT_TRUE(waitUntil([&] { return checked.count("copied") == 2; }));
}
