#include "database/ReleaseDate.h"

#include <QDateTime>

#include <cstdlib>

namespace Stemhaven {

namespace {

/// The database's 'localtime': outside of these years it takes the rules of a year that has as many days, of
/// the first four of this century.
QDate dayInDatabase(qint64 seconds) {
    constexpr qint64 firstOfRange = 0;
    constexpr qint64 endOfRange = 2147385600; // 2038-01-18
    if (seconds >= firstOfRange && seconds < endOfRange)
        return QDateTime::fromSecsSinceEpoch(seconds).date();
    const QDateTime moment = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
    const QDate day = moment.date();
    const int likeYear = 2000 + day.year() % 4;
    const QDateTime like(QDate(likeYear, day.month(), day.day()), moment.time(), Qt::UTC);
    const QDate local = like.toLocalTime().date();
    return {local.year() - likeYear + day.year(), local.month(), local.day()};
}

QDateTime startOf(QDate day) {
    constexpr int mostDaysLeftOut = 2;
    QDateTime start = day.startOfDay();
    for (int left = 1; !start.isValid() && left <= mostDaysLeftOut; ++left)
        start = day.addDays(left).startOfDay();
    return start;
}

} // namespace

qint64 storedReleaseDate(QDate day) {
    constexpr qint64 minute = 60;
    // More than a zone has moved by when it went over the date line.
    constexpr qint64 farthest = 26 * 60 * minute;
    const qint64 start = startOf(day).toSecsSinceEpoch();
    // Where the zone had other rules than those of the year that the database takes, the day is another one
    // for it.
    for (const qint64 step : {minute, -minute}) {
        for (qint64 moved = 0; std::abs(moved) <= farthest; moved += step) {
            if (dayInDatabase(start + moved) == day)
                return start + moved;
        }
    }
    return start;
}

} // namespace Stemhaven
