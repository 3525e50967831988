#include "database/SqlText.h"

namespace Stemhaven {

QString escape(const QString& text) {
    QString escaped = text;
    // It would end the statement in the middle of the text.
    escaped.remove(QChar(u'\0'));
    return escaped.replace(QLatin1Char('\''), QLatin1String("''"));
}

const QStringList& projectsFieldNames() {
    static const QStringList names = {
        "project_id",
        "filepath",
        "filename",
        "SUFID",
        "artist",
        "release_name",
        "publicly_released",
        "ISRC",
        "UPC",
        "album",
        "name",
        "project_type",
        "logic_version",
        "bpm",
        "song_key",
        "song_gender_key",
        "song_signature_numerator",
        "song_signature_denominator",
        "song_signature",
        "genre_id",
        "number_of_tracks",
        "sample_rate",
        "notes",
        "progress",
        "completed",
        "ignored",
        "created",
        "last_modified",
        "last_updated",
        "release_date",
        "star_rating",
        "arrangement_status",
        "lyrics_status",
        "recording_status",
        "mix_master_status",
        "alternative_count"};
    return names;
}

bool isValidProjectsFieldName(const QString& name) {
    return projectsFieldNames().contains(name);
}

} // namespace Stemhaven
