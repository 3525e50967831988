#include "program/Profile.h"

#include <gtest/gtest.h>

TEST(DemoLibrary, IsReadableToItsLastProject) {
    Profile first;
    ASSERT_EQ(first.runToEnd({"--projects", "80", "--catalogue", first.projects()}, DEMO_LIBRARY), 0)
        << first.output().toStdString();
    EXPECT_EQ(first.rows("SELECT count(*) FROM projects"), QStringList("80"));
    ASSERT_EQ(first.runToEnd({"--screenshot", first.picture()}), 0) << first.output().toStdString();

    Profile second;
    ASSERT_EQ(second.runToEnd({"--projects", "80", second.projects()}, DEMO_LIBRARY), 0);
    second.oweSearch();
    ASSERT_EQ(second.runToEnd({"--screenshot", second.picture()}), 0);
    EXPECT_EQ(second.rows("SELECT count(*) FROM projects"), QStringList("80"));
}
