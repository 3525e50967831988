#include "database/ReleaseStatements.h"

#include "database/ReleaseDate.h"
#include "database/SqlText.h"
#include "database/UserDataStatements.h"

namespace Stemhaven::ReleaseStatements {

namespace {

QString quoted(const QString& text) {
    return QLatin1Char('\'') + escape(text) + QLatin1Char('\'');
}

QString flag(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

QString select(qint64 projectId) {
    return QStringLiteral("SELECT artist, release_name, publicly_released, ISRC, UPC, completed, "
                          "date(release_date, 'unixepoch', 'localtime') as r_date, album FROM projects WHERE "
                          "project_id=%1")
        .arg(projectId);
}

const QStringList& columns() {
    static const QStringList names = {"artist", "release_name", "publicly_released", "ISRC",
                                      "UPC",    "completed",    "release_date",      "album"};
    return names;
}

QStringList literals(const ReleaseDetails& details) {
    const bool hasDate = details.isPubliclyReleased && details.date.isValid();
    return {
        quoted(details.artist),
        quoted(details.releaseName),
        flag(details.isPubliclyReleased),
        quoted(details.isrc),
        quoted(details.upc),
        QLatin1Char('\'') + flag(details.isCompleted) + QLatin1Char('\''),
        hasDate ? QString::number(storedReleaseDate(details.date)) : QStringLiteral("NULL"),
        quoted(details.album)};
}

QString update(const ReleaseDetails& details, qint64 projectId) {
    return UserDataStatements::setLiterals(columns(), literals(details), projectId);
}

QString selectReleased(QDate first, QDate last) {
    // The bounds let most rows be without a conversion; they are wide enough for any zone.
    constexpr int margin = 2;
    const auto bound = [](QDate day) {
        return QString::number(day.startOfDay(Qt::UTC).toSecsSinceEpoch());
    };
    return QStringLiteral(
               "SELECT project_id, coalesce(nullif(trim(release_name), ''), name), artist, completed, r_date "
               "FROM (SELECT *, date(release_date, 'unixepoch', 'localtime') AS r_date FROM projects "
               "WHERE publicly_released<>0 AND release_date BETWEEN %1 AND %2) "
               "WHERE r_date BETWEEN '%3' AND '%4'")
        .arg(
            bound(first.addDays(-margin)), bound(last.addDays(margin)), first.toString(Qt::ISODate),
            last.toString(Qt::ISODate));
}

} // namespace Stemhaven::ReleaseStatements
