#include "database/ReleaseDate.h"

#include "support/TestDatabase.h"

#include <QDate>

#include <gtest/gtest.h>

#include <ctime>
#include <tuple>
#include <vector>

using Stemhaven::storedReleaseDate;

namespace {

/// Another time zone for the whole process, as long as it lives.
class Zone {
public:
    explicit Zone(const char* name) {
        qputenv("TZ", name);
        tzset();
    }

    ~Zone() {
        if (m_before.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", m_before);
        tzset();
    }

    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

private:
    const QByteArray m_before = qgetenv("TZ");
};

/// Some in each season of old and far years, and those on which clocks were changed.
std::vector<QDate> days() {
    std::vector<QDate> result = {{2018, 11, 4},  {2019, 3, 31},  {2021, 3, 28}, {2022, 3, 27},
                                 {2024, 3, 10},  {2024, 11, 3},  {2026, 3, 29}, {2026, 10, 25},
                                 {2011, 12, 29}, {2011, 12, 31}, {2024, 2, 29}, {2040, 2, 29}};
    for (const int year : {1899, 1943, 1969, 1970, 1995, 2007, 2026, 2037, 2038, 2039, 2100, 9999}) {
        for (const int month : {1, 4, 7, 12}) {
            for (const int day : {1, 18, 30})
                result.emplace_back(year, month, day);
        }
    }
    return result;
}

} // namespace

TEST(ReleaseDate, ComesBackAsTheSameDayInEveryZone) {
    TestDatabase database;
    for (const char* name :
         {"UTC", "America/Sao_Paulo", "Asia/Beirut", "America/Havana", "Pacific/Apia", "Pacific/Kiritimati",
          "Asia/Kolkata", "Europe/London", "Europe/Berlin", "America/New_York", "Australia/Lord_Howe",
          "Pacific/Chatham", "Africa/Monrovia"}) {
        SCOPED_TRACE(name);
        const Zone zone(name);
        QStringList stored;
        QStringList expected;
        for (const QDate day : days()) {
            stored.append(QString::number(storedReleaseDate(day)));
            expected.append(day.toString(Qt::ISODate));
        }
        EXPECT_EQ(
            database.rows(
                QString("WITH s(t) AS (VALUES (%1)) SELECT date(t, 'unixepoch', 'localtime') FROM s")
                    .arg(stored.join("), ("))),
            expected);
    }
}

TEST(ReleaseDate, IsTheStartOfTheDayInLocalTime) {
    const std::tuple<const char*, QDate, qint64> cases[] = {
        {"Asia/Kolkata", {2026, 11, 22}, 1795285800},
        {"America/New_York", {1965, 1, 4}, -157489200},
        // The clocks went from midnight to one.
        {"America/Sao_Paulo", {2018, 11, 4}, 1541300400},
        // There was no such day.
        {"Pacific/Apia", {2011, 12, 30}, 1325239200}};
    for (const auto& [name, day, start] : cases) {
        const Zone zone(name);
        EXPECT_EQ(storedReleaseDate(day), start) << name;
    }
}
