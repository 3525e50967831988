#include "program/Profile.h"

#include <gtest/gtest.h>

class StormTest : public testing::TestWithParam<int> {};

TEST_P(StormTest, LeavesTheCatalogueAsTheLibraryIs) {
    Profile profile;
    const QStringList arguments{
        "--seed", QString::number(GetParam()), "--steps", "40", "--settle-each", "10", "--program", PROGRAM};
    EXPECT_EQ(profile.runToEnd(arguments, STORM), 0) << profile.output().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Seeds, StormTest, testing::Values(1, 2, 3));

TEST(StartLoop, StartsTheProgramAfterEachKill) {
    Profile profile;
    EXPECT_EQ(profile.runToEnd({"--starts", "15", "--program", PROGRAM}, STORM), 0)
        << profile.output().toStdString();
}
