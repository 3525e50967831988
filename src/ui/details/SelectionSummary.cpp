#include "ui/details/SelectionSummary.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

/// The value of a column that is the same in all records.
std::optional<QVariant> shared(const QSqlQuery& row, const QString& column) {
    QVariant least = row.value(QLatin1String("min_") + column);
    if (least != row.value(QLatin1String("max_") + column))
        return std::nullopt;
    return least;
}

std::optional<int> sharedNumber(const QSqlQuery& row, const char* column, int most) {
    const auto value = shared(row, QLatin1String(column));
    return value ? std::optional(std::clamp(value->toInt(), 0, most)) : std::nullopt;
}

std::optional<QString> sharedText(const QSqlQuery& row, const char* column) {
    const auto value = shared(row, QLatin1String(column));
    return value ? std::optional(value->toString()) : std::nullopt;
}

QSet<qint64> present(const QSqlQuery& row, const QString& column) {
    QSet<qint64> values;
    const QStringList texts =
        row.value(QLatin1String("all_") + column).toString().split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& text : texts)
        values.insert(qRound64(text.toDouble()));
    return values;
}

} // namespace

SelectionSummary readSelectionSummary(const QSqlQuery& row) {
    constexpr int mostStars = 5;
    constexpr int mostPercent = 100;
    SelectionSummary summary;
    summary.count = row.value(QStringLiteral("count")).toInt();
    summary.ignoredCount = row.value(QStringLiteral("ignored_count")).toInt();
    summary.stars = sharedNumber(row, "star_rating", mostStars);
    summary.progressPercent = sharedNumber(row, "progress_percent", mostPercent);
    for (const FilterType status : statusFilterTypes) {
        const auto id = shared(row, tableNameForStatus(status));
        summary.statuses.insert(status, id ? std::optional(id->toLongLong()) : std::nullopt);
        summary.presentStatuses.insert(status, present(row, tableNameForStatus(status)));
    }
    summary.presentStars = present(row, QStringLiteral("star_rating"));
    summary.presentPercents = present(row, QStringLiteral("progress_percent"));
    summary.tempo = sharedText(row, "bpm");
    summary.timeSignature = sharedText(row, "time_signature");
    summary.key = sharedText(row, "song_key");
    summary.folder = sharedText(row, "filepath");
    return summary;
}

void addEntryCount(SelectionSummary& summary, const QSqlQuery& row) {
    const auto type = static_cast<FilterType>(row.value(0).toInt());
    summary.entryCounts[type].insert(row.value(1).toLongLong(), row.value(2).toInt());
}
