#include "app/Paths.h"
#include "app/SystemCall.h"

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

TEST(SystemCall, ReturnsStandardOutputAlone) {
    const std::pair<const char*, QString> cases[] = {
        {"echo out; echo err >&2; exit 3", "out\n"},
        {"printf '%s' ' ein \"Stück\" '", " ein \"Stück\" "},
        {"printf '%0127d\\n%0128d' 0 0", QString(127, '0') + "\n" + QString(128, '0')},
        {"printf '%0100000d' 0", QString(100'000, '0')},
        {"true", ""},
    };
    testing::internal::CaptureStderr();
    for (const auto& [command, output] : cases)
        EXPECT_EQ(Stemhaven::systemCall(command), output) << command;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "err\n");
    EXPECT_EQ(Stemhaven::system_call("printf '\\377\\n'"), "\xff\n");
}

} // namespace
