#include "ui/details/ProjectRecord.h"

#include <QLocale>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

int percent(double fraction) {
    // Rounded: 0.57 is a little less than that.
    return std::clamp(qRound(fraction * 100), 0, 100);
}

} // namespace

QSet<qint64> ProjectRecord::associations(FilterType type) const {
    switch (type) {
    case FilterType::COLLECTIONS:
        return collections;
    case FilterType::GENRES:
        return genres;
    case FilterType::TAGS:
        return tags;
    default:
        return {};
    }
}

ProjectRecord readProjectRecord(const QSqlQuery& query) {
    const auto text = [&](const char* column) {
        return query.value(QLatin1String(column)).toString();
    };
    const auto number = [&](const char* column) {
        return query.value(QLatin1String(column)).toLongLong();
    };

    const QVariant bpm = query.value(QStringLiteral("bpm"));
    const bool isFraction = bpm.typeId() == QMetaType::Double;
    const QString tempo =
        isFraction ? QLocale().toString(bpm.toDouble(), 'g', QLocale::FloatingPointShortest) : bpm.toString();

    ProjectRecord record;
    record.id = number("project_id");
    record.name = text("name");
    record.bundlePath = text("filepath") + text("filename");
    record.details = tempo + QLatin1String(" BPM - ") + text("song_signature_numerator") + QLatin1Char('/') +
        text("song_signature_denominator") + QLatin1String(" - ") + text("song_key");
    record.ignored = number("ignored") != 0;
    record.stars = std::clamp(static_cast<int>(number("star_rating")), 0, 5);
    record.progressPercent = percent(query.value(QStringLiteral("progress")).toDouble());
    for (const FilterType status : statusFilterTypes)
        record.statuses.insert(status, query.value(tableNameForStatus(status)).toLongLong());
    const QVariant genre = query.value(QStringLiteral("genre_id"));
    if (!genre.isNull())
        record.genres.insert(genre.toLongLong());
    record.lastModified = number("last_modified");
    return record;
}
