#pragma once

#include <cstdint>
#include <string>

namespace Plist {

/// A point in time, in whole seconds since 1970-01-01 00:00:00 UTC.
class Date {
public:
    /// The current time.
    Date();

    /// From calendar fields (month 1 to 12, full year), in UTC or in local time.
    ///
    /// Local fields are read with the daylight saving that is in force now, so for a time of the other season
    /// they are an hour off the clocks of then. UTC fields do not depend on the zone.
    ///
    /// Throws Error for a time before 1969-12-31 23:59:59 UTC; that second itself is how the C library
    /// reports a failure, and passes.
    Date(int month, int day, int year, int hour, int minute, int second, bool UTC);

    void set(int month, int day, int year, int hour, int minute, int second, bool UTC);
    void setToCurrentTime();

    std::int64_t timeAsEpoch() const;

    /// Seconds from other to this.
    std::int64_t secondsSinceDate(const Date& other) const;

    /// Seconds since 2001-01-01 00:00:00 UTC, the epoch of the binary form.
    double timeAsAppleEpoch() const;

    /// Truncates to whole seconds. Throws Error for what is not a number or does not fit.
    void setTimeFromAppleEpoch(double seconds);

    /// For example 2024-02-29T12:00:00Z. Throws Error for a time so far off that the C library has no year
    /// for it.
    std::string timeAsXMLConvention() const;

    /// Throws Error unless text gives all six fields.
    void setTimeFromXMLConvention(const std::string& text);

    /// -1, 0 or 1 as a is before, at or after b.
    static int compare(const Date& a, const Date& b);

private:
    std::int64_t m_seconds = 0;
};

bool operator<(const Date& a, const Date& b);
bool operator>(const Date& a, const Date& b);
bool operator==(const Date& a, const Date& b);

} // namespace Plist
