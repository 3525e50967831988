#include "ListBytes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace {

using Plist::Date;

void useZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}

/// Berlin, Sydney and Kolkata. One of the hemispheres has daylight saving time whenever this runs.
constexpr std::array zones{"CET-1CEST,M3.5.0,M10.5.0/3", "AEST-10AEDT,M10.1.0,M4.1.0/3", "IST-5:30", "UTC0"};

TEST(Date, OfUtcFieldsDoesNotDependOnTheZoneAndOfLocalOnesDoes) {
    const std::pair<const char*, std::int64_t> cases[] = {
        {"2024-02-29T12:00:00Z", 1709208000},
        {"2024-07-01T00:30:00Z", 1719793800},
        {"9999-12-31T23:59:59Z", 253402300799},
        {"1970-01-01T00:00:00Z", 0},
    };

    for (const char* zone : zones) {
        SCOPED_TRACE(zone);
        useZone(zone);
        for (const auto& [text, seconds] : cases) {
            Date date;
            date.setTimeFromXMLConvention(text);
            EXPECT_EQ(date.timeAsEpoch(), seconds) << text;
            EXPECT_EQ(date.timeAsXMLConvention(), text);
        }
        const std::time_t now = std::time(nullptr);
        std::tm at{};
        localtime_r(&now, &at);
        const Date local(
            at.tm_mon + 1, at.tm_mday, at.tm_year + 1900, at.tm_hour, at.tm_min, at.tm_sec, false);
        EXPECT_EQ(local.timeAsEpoch(), now);
    }
}

TEST(Date, AppleEpochCountsFrom2001) {
    Date date;
    date.setTimeFromAppleEpoch(0.9);
    EXPECT_EQ(date.timeAsEpoch(), 978307200);
    EXPECT_EQ(date.timeAsAppleEpoch(), 0.0);
    date.setTimeFromAppleEpoch(-978307200.9); // towards zero, not down
    EXPECT_EQ(date.timeAsEpoch(), 0);
    EXPECT_EQ(date.secondsSinceDate(Date(1, 1, 2001, 0, 0, 0, true)), -978307200);
    EXPECT_EQ(errorOf([] { Date(12, 31, 1969, 23, 59, 58, true); }), "Plist::Date::set() date invalid");

    for (const double bad : {std::nan(""), HUGE_VAL, -HUGE_VAL, 9.3e18, -9.3e18})
        EXPECT_THROW(date.setTimeFromAppleEpoch(bad), Plist::Error) << bad;
    EXPECT_EQ(date.timeAsEpoch(), 0);
    date.setTimeFromAppleEpoch(4e18);
    EXPECT_THROW(date.timeAsXMLConvention(), Plist::Error);
}

} // namespace
