#include "monitor/Rechecks.h"

#include "support/Waiting.h"

#include <QStringList>

#include <gtest/gtest.h>

using Stemhaven::Rechecks;

TEST(Rechecks, LookOnceMoreAtWhatCouldNotBeRead) {
    QStringList checked;
    Rechecks* self = nullptr;
    Rechecks rechecks(std::chrono::milliseconds(1), [&](const QString& path) {
        checked.append(path);
        if (path == "damaged")
            self->bundleUnreadable(path);
        else if (path == "gone")
            self->bundleVanished(path);
        else
            self->bundleWritten(path);
        return true;
    });
    self = &rechecks;

    for (const auto* path : {"damaged", "copied", "gone"})
        rechecks.bundleUnreadable(path);
    ASSERT_TRUE(waitUntil([&] { return checked.size() == 3; }));
    // Unreadable again after it was written, or back again: it gets its second chance anew.
    for (const auto* path : {"copied", "gone"}) {
        rechecks.bundleUnreadable(path);
        ASSERT_TRUE(waitUntil([&] { return checked.count(path) == 2; }, 5)) << path;
    }
    EXPECT_EQ(checked.count("damaged"), 1);
    EXPECT_FALSE(rechecks.areWaitingForDatabase());
}

TEST(Rechecks, TryTheDatabaseWithFewAndCheckAllOnceItAnswers) {
    QStringList checked;
    Rechecks* self = nullptr;
    int failuresLeft = 3;
    Rechecks rechecks(std::chrono::milliseconds(1), [&](const QString& path) {
        if (path == "vanished")
            return false;
        checked.append(path);
        if (failuresLeft-- > 0)
            self->databaseFailed(path);
        else
            self->checkEnded();
        return true;
    });
    self = &rechecks;

    for (int i = 0; i < 300; ++i) {
        // Those that were being checked when it went away, and those that changed since.
        if (i < 16)
            rechecks.databaseFailed(QString::number(i));
        else
            rechecks.waitForDatabase(QString::number(i));
    }
    rechecks.waitForDatabase("vanished");
    EXPECT_TRUE(rechecks.areWaitingForDatabase());
    ASSERT_TRUE(waitUntil([&] { return !rechecks.areWaitingForDatabase(); }));
    EXPECT_EQ(checked.size(), 300 + 3);
    checked.removeDuplicates();
    EXPECT_EQ(checked.size(), 300);
}
