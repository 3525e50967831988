#include "plist/Date.h"

#include "plist/Value.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <limits>

namespace Plist {

namespace {

constexpr std::int64_t appleEpoch = 978307200;

std::tm utcFields(std::int64_t seconds) {
    const std::time_t time = seconds;
    std::tm fields{};
    if (gmtime_r(&time, &fields) == nullptr)
        throw Error("Plist: date has no calendar year");
    return fields;
}

int daylightSavingNow() {
    const std::time_t now = std::time(nullptr);
    std::tm fields{};
    return localtime_r(&now, &fields) == nullptr ? -1 : fields.tm_isdst;
}

} // namespace

Date::Date() {
    setToCurrentTime();
}

Date::Date(int month, int day, int year, int hour, int minute, int second, bool UTC) {
    set(month, day, year, hour, minute, second, UTC);
}

void Date::set(int month, int day, int year, int hour, int minute, int second, bool UTC) {
    constexpr int least = std::numeric_limits<int>::min();
    if (month < least + 1 || year < least + 1900)
        throw Error("Plist::Date::set() date invalid");

    std::tm fields{};
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_year = year - 1900;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = UTC ? 0 : daylightSavingNow();

    // std::mktime takes fields for local time and would refuse the first hours of 1970, or not, as the zone
    // is.
    const std::int64_t seconds = UTC ? timegm(&fields) : std::mktime(&fields);
    if (seconds < -1)
        throw Error("Plist::Date::set() date invalid");
    m_seconds = seconds;
}

void Date::setToCurrentTime() {
    m_seconds = std::time(nullptr);
}

std::int64_t Date::timeAsEpoch() const {
    return m_seconds;
}

std::int64_t Date::secondsSinceDate(const Date& other) const {
    return m_seconds - other.m_seconds;
}

double Date::timeAsAppleEpoch() const {
    return static_cast<double>(m_seconds - appleEpoch);
}

void Date::setTimeFromAppleEpoch(double seconds) {
    constexpr double limit = 0x1p62; // so that the distance between two dates fits as well
    const double sinceEpoch = seconds + static_cast<double>(appleEpoch);
    if (!(sinceEpoch > -limit && sinceEpoch < limit))
        throw Error("Plist: date out of range");
    m_seconds = static_cast<std::int64_t>(sinceEpoch);
}

std::string Date::timeAsXMLConvention() const {
    const std::tm fields = utcFields(m_seconds);
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &fields);
    return {text.data(), length};
}

void Date::setTimeFromXMLConvention(const std::string& text) {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    const int found =
        std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2dZ", &year, &month, &day, &hour, &minute, &second);
    if (found != 6)
        throw Error("Plist: date text is incomplete");
    set(month, day, year, hour, minute, second, true);
}

int Date::compare(const Date& a, const Date& b) {
    if (a.m_seconds == b.m_seconds)
        return 0;
    return a.m_seconds < b.m_seconds ? -1 : 1;
}

bool operator<(const Date& a, const Date& b) {
    return Date::compare(a, b) < 0;
}

bool operator>(const Date& a, const Date& b) {
    return Date::compare(a, b) > 0;
}

bool operator==(const Date& a, const Date& b) {
    return Date::compare(a, b) == 0;
}

} // namespace Plist
