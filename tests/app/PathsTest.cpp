#include "app/Paths.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace {

TEST(Paths, AreThoseOfTheEnvironmentAtLoadWhateverTheApplicationIsCalled) {
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    ASSERT_FALSE(data.isEmpty());
    ASSERT_NE(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation), data);
    EXPECT_EQ(Stemhaven::mainDatabasePath(), data + "/Stemhaven/stemhaven-main.db");
    EXPECT_EQ(Stemhaven::rootPathsDatabasePath(), data + "/Stemhaven/stemhaven-root-paths.db");
}

} // namespace
