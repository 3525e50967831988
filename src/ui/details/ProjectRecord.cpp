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
    record.details = tempo + QLatin1String(" BPM - ") + text("song_signature_numerator") +
        QLatin1Char('/') + text("song_signature_denominator") + QLatin1String(" - ") + text("song_key");
    record.progressPercent = percent(query.value(QStringLiteral("progress")).toDouble());
    record.lastModified = number("last_modified");
    return record;
}
