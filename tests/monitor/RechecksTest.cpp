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
        else
            self->bundleWritten(path);
        return true;
    });
    self = &rechecks;

    rechecks.bundleUnreadable("damaged");
    rechecks.bundleUnreadable("copied");
    ASSERT_TRUE(waitUntil([&] { return checked.size() == 2; }));
    // Unreadable again after it was written: it gets its second chance anew.
    rechecks.bundleUnreadable("copied");
    ASSERT_TRUE(waitUntil([&] { return checked.count("copied") == 2; }));
    EXPECT_EQ(checked.count("damaged"), 1);
    EXPECT_FALSE(rechecks.areWaitingForDatabase());
}

TEST(Rechecks, GiveABundleThatWentAwayItsSecondChanceWhenItComesBack) {
    int checks = 0;
    Rechecks* self = nullptr;
    Rechecks rechecks(std::chrono::milliseconds(1), [&](const QString& path) {
        ++checks;
        self->bundleVanished(path);
        return true;
    });
    self = &rechecks;
    for (int copies = 1; copies <= 2; ++copies) {
        rechecks.bundleUnreadable("copied");
        EXPECT_TRUE(waitUntil([&] { return checks == copies; }, 5));
    }
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
