#include "plist/Date.h"

#include "plist/Value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <string>

namespace {

using Plist::Date;

class DateInZone : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override { use(GetParam()); }

    void TearDown() override { use("UTC0"); }

private:
    static void use(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
};

TEST_P(DateInZone, FieldsInUtcDoNotDependOnTheZone) {
    const struct {
        const char* text;
        std::int64_t seconds;
    } cases[] = {
        {"2024-02-29T12:00:00Z", 1709208000},   {"2024-07-01T00:30:00Z", 1719793800},
        {"1987-06-05T04:03:02Z", 549864182},    {"2038-01-19T03:14:08Z", 2147483648},
        {"9999-12-31T23:59:59Z", 253402300799},
    };

    for (const auto& [text, seconds] : cases) {
        Date date;
        date.setTimeFromXMLConvention(text);
        EXPECT_EQ(date.timeAsEpoch(), seconds) << text;
        EXPECT_EQ(date.timeAsXMLConvention(), text);
    }
}

TEST_P(DateInZone, LocalFieldsAreOfTheZone) {
    const std::time_t now = std::time(nullptr);
    std::tm fields{};
    localtime_r(&now, &fields);
    const Date date(
        fields.tm_mon + 1, fields.tm_mday, fields.tm_year + 1900, fields.tm_hour, fields.tm_min,
        fields.tm_sec, false);
    EXPECT_EQ(date.timeAsEpoch(), now);
}

// One of the hemispheres has daylight saving time whenever this runs.
INSTANTIATE_TEST_SUITE_P(
    Zones, DateInZone,
    testing::Values(
        "UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0", "AEST-10AEDT,M10.1.0,M4.1.0/3"));

TEST(Date, BeforeTheEpochIsInvalidButForOneSecond) {
    EXPECT_EQ(Date(1, 1, 1970, 0, 0, 0, true).timeAsEpoch(), 0);
    EXPECT_EQ(Date(12, 31, 1969, 23, 59, 59, true).timeAsEpoch(), -1);
    constexpr int least = std::numeric_limits<int>::min();
    const int years[] = {1969, 0, least};
    for (const int year : years) {
        try {
            Date(12, 31, year, 23, 59, 58, true);
            ADD_FAILURE() << year;
        } catch (const Plist::Error& error) {
            EXPECT_STREQ(error.what(), "Plist::Date::set() date invalid");
        }
    }
    EXPECT_THROW(Date(least, 1, 2000, 0, 0, 0, true), Plist::Error);
}

TEST(Date, TextNeedsAllSixFields) {
    Date date;
    for (const char* text : {"", "2024-02-29", "2024-02-29T12:00", "2024-02-29T12:00:", "yesterday"})
        EXPECT_THROW(date.setTimeFromXMLConvention(text), Plist::Error) << text;
}

TEST(Date, AppleEpochCountsFrom2001) {
    Date date;
    date.setTimeFromAppleEpoch(0.9);
    EXPECT_EQ(date.timeAsEpoch(), 978307200);
    EXPECT_EQ(date.timeAsAppleEpoch(), 0.0);
    date.setTimeFromAppleEpoch(-978307200.9); // towards zero, not down
    EXPECT_EQ(date.timeAsEpoch(), 0);

    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL, 9.3e18, -9.3e18})
        EXPECT_THROW(date.setTimeFromAppleEpoch(bad), Plist::Error) << bad;
    EXPECT_EQ(date.timeAsEpoch(), 0);

    Date farthest;
    date.setTimeFromAppleEpoch(4e18);
    farthest.setTimeFromAppleEpoch(-4e18);
    EXPECT_GT(date.secondsSinceDate(farthest), 0);
    EXPECT_LT(farthest.timeAsAppleEpoch(), 0);
    EXPECT_THROW(date.timeAsXMLConvention(), Plist::Error);
}

TEST(Date, Compares) {
    const Date earlier(1, 2, 2003, 4, 5, 6, true);
    const Date later(1, 2, 2003, 4, 5, 16, true);
    EXPECT_EQ(Date::compare(earlier, later), -1);
    EXPECT_EQ(Date::compare(later, earlier), 1);
    EXPECT_EQ(Date::compare(later, later), 0);
    EXPECT_EQ(later.secondsSinceDate(earlier), 10);
}

} // namespace
