#include "database/DatabaseInitStatements.h"

#include "database/SqlText.h"

#include <QStringList>

namespace Stemhaven {

namespace {

QString statusTable(const QString& name) {
    return QStringLiteral("CREATE TABLE IF NOT EXISTS %1 (%1_id INTEGER PRIMARY KEY, name TEXT NOT NULL);")
        .arg(name);
}

DatabaseInitStatements::StatusDefaults
statusRows(const QString& table, const QStringList& labels, const QString& failureText) {
    DatabaseInitStatements::StatusDefaults defaults;
    defaults.select = QStringLiteral("SELECT * FROM %1;").arg(table);
    defaults.failureText = failureText;
    for (qsizetype id = 0; id < labels.size(); ++id) {
        defaults.inserts.append(QStringLiteral("INSERT INTO %1 VALUES(%2, '%3');")
                                    .arg(table, QString::number(id), escape(labels[id])));
    }
    return defaults;
}

} // namespace

DatabaseInitStatements::DatabaseInitStatements(DatabaseVersion version)
    : m_version(DatabaseVersionToString(version)) {}

QList<QString> DatabaseInitStatements::initMainSQL() const {
    return {
        QStringLiteral(
            "CREATE TABLE IF NOT EXISTS projects (project_id INTEGER PRIMARY KEY, filepath TEXT NOT NULL, "
            "filename TEXT NOT NULL, SUFID TEXT, artist TEXT, release_name TEXT, "
            "publicly_released INTEGER DEFAULT 0, ISRC TEXT, UPC TEXT, album TEXT, name TEXT, "
            "project_type TEXT, logic_version TEXT, bpm REAL NOT NULL, song_key TEXT, song_gender_key TEXT, "
            "song_signature_numerator INTEGER, song_signature_denominator INTEGER, song_signature TEXT, "
            "genre_id INTEGER, number_of_tracks INTEGER NOT NULL, sample_rate INTEGER NOT NULL, notes BLOB, "
            "progress REAL /* 0-1 */, completed INTEGER DEFAULT 0, ignored INTEGER DEFAULT 0, "
            "/* Unix timestamps UTC */ created INTEGER, last_modified INTEGER, last_updated INTEGER, "
            "release_date INTEGER, star_rating INTEGER DEFAULT 0, arrangement_status INTEGER DEFAULT 0, "
            "lyrics_status INTEGER DEFAULT 0, recording_status INTEGER DEFAULT 0, "
            "mix_master_status INTEGER DEFAULT 0, alternative_count INTEGER DEFAULT 1);"),
        statusTable(QStringLiteral("arrangement_status")),
        statusTable(QStringLiteral("lyrics_status")),
        statusTable(QStringLiteral("recording_status")),
        statusTable(QStringLiteral("mix_master_status")),
        QStringLiteral("CREATE TABLE IF NOT EXISTS tags (tag_id INTEGER PRIMARY KEY, name TEXT NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS project_tag_map (project_id INTEGER NOT NULL, tag_id "
                       "INTEGER NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS associated_files (project_id INTEGER, "
                       "filepath TEXT NOT NULL /* Can be directory or file */);"),
        QStringLiteral(
            "CREATE TABLE IF NOT EXISTS settings (hide_finished_tracks INTEGER DEFAULT 0, "
            "directory_structure_type TEXT DEFAULT NULL, move_project_on_change INTEGER DEFAULT 0);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS collections "
                       "(collection_id INTEGER PRIMARY KEY, name TEXT NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS collections_projects_map "
                       "(collection_id INTEGER NOT NULL, project_id INTEGER NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS saved_searches "
                       "(saved_search_id INTEGER PRIMARY KEY, search_term TEXT NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS possible_duplicates (first_project_id INT NOT NULL, "
                       "second_project_id INT NOT NULL, reason TEXT NOT NULL);"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS details (database_version TEXT DEFAULT '%1');")
            .arg(m_version),
        QStringLiteral("CREATE TABLE IF NOT EXISTS genres "
                       "(genre_id INTEGER PRIMARY KEY, name TEXT NOT NULL, subdir TEXT);"),
    };
}

QString DatabaseInitStatements::initRootPathsSQL() const {
    return QStringLiteral(
        "CREATE TABLE IF NOT EXISTS root_project_search_paths (root_search_path TEXT DEFAULT NULL);");
}

QList<DatabaseInitStatements::StatusDefaults> DatabaseInitStatements::statusDefaults() const {
    return {
        statusRows(
            QStringLiteral("arrangement_status"),
            {tr("Arrangement Status Unknown"), tr("Needs Layering"), tr("Needs Progression"),
             tr("Needs Intro"), tr("Needs Outro"), tr("Needs Looping"), tr("Arrangement Done")},
            QStringLiteral("Could not initialize default arrangement status records!")),
        statusRows(
            QStringLiteral("lyrics_status"),
            {tr("Lyrics Status Unknown"), tr("No Lyrics"), tr("Needs Lyrics"),
             tr("Lyric Writing In Progress"), tr("Lyrics Done")},
            QStringLiteral("Could not initialize default lyrics status records!")),
        statusRows(
            QStringLiteral("recording_status"),
            {tr("Recording Status Unknown"), tr("No Recording Needed"), tr("Needs Takes"),
             tr("Needs Vocal Takes"), tr("Needs Instrument Takes"), tr("Recording Done")},
            QStringLiteral("Could not initialize default recording status records!")),
        statusRows(
            QStringLiteral("mix_master_status"),
            {tr("Mix/Master Status Unknown"), tr("Needs Mixing"), tr("Needs EQ"), tr("Needs FX"),
             tr("Needs Playtesting"), tr("Mix/Master Done")},
            QStringLiteral("Could not initialize default recording status records!")),
    };
}

QString DatabaseInitStatements::selectVersion() const {
    return QStringLiteral("SELECT database_version FROM details;");
}

QString DatabaseInitStatements::insertVersion() const {
    return QStringLiteral("INSERT INTO details VALUES('%1')").arg(m_version);
}

QString DatabaseInitStatements::updateVersion() const {
    return QStringLiteral("UPDATE details SET database_version='%1';").arg(m_version);
}

} // namespace Stemhaven
