#include "database/ProjectStatements.h"

#include "database/SqlText.h"
#include "project/ProjectData.h"

#include <QDateTime>

#include <cmath>

namespace Stemhaven::ProjectStatements {

namespace {

QString decimal(qint64 value) {
    return QString::number(value);
}

QString seconds(const QDateTime& time) {
    return decimal(time.isValid() ? time.toUTC().toSecsSinceEpoch() : 0);
}

QString tempo(double bpm) {
    // Neither infinity nor what is no number has a literal in SQL.
    return QString::number(std::isfinite(bpm) ? bpm : 0.0, 'g', QLocale::FloatingPointShortest);
}

QString signature(const ProjectData& data) {
    return QStringLiteral("%1/%2").arg(
        decimal(data.songSignatureNumerator()), decimal(data.songSignatureDenominator()));
}

QString selectRecords(const QString& condition) {
    return QStringLiteral(
               "SELECT project_id, filepath, filename, SUFID, last_modified FROM projects WHERE ") +
        condition;
}

} // namespace

QString selectRecordedBundles() {
    return QStringLiteral("SELECT filepath, filename, SUFID, last_modified, last_updated FROM projects;");
}

QString selectBySufid(const QString& sufid) {
    return selectRecords(QStringLiteral("SUFID='%1'").arg(escape(sufid)));
}

QString selectById(long long projectId) {
    return selectRecords(QStringLiteral("project_id=%1").arg(decimal(projectId)));
}

QString selectByPath(const QString& filepath, const QString& filename) {
    return selectRecords(
        QStringLiteral("filepath='%1' AND filename='%2'").arg(escape(filepath), escape(filename)));
}

QString countBelow(const QStringList& folders) {
    QStringList prefixes;
    for (const QString& folder : folders)
        prefixes.append(QStringLiteral("('") + escape(folder) + QStringLiteral("')"));
    // Not LIKE, which has wildcards and takes letters of either case for the same. Not by placeholders: a
    // path may look like one.
    return QStringLiteral("WITH folders(prefix) AS (VALUES ") + prefixes.join(QLatin1String(", ")) +
        QStringLiteral(") SELECT (SELECT count(*) FROM projects WHERE substr(filepath, 1, length(prefix))="
                       "prefix) FROM folders");
}

QString selectIdByPath() {
    return QStringLiteral("SELECT project_id FROM projects WHERE filepath=? AND filename=?");
}

QString selectWithoutPlace() {
    return QStringLiteral("SELECT project_id FROM projects WHERE filepath=''");
}

QString insert(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated) {
    return QStringLiteral(
               "INSERT INTO projects (filepath, filename, name, project_type, logic_version, bpm, song_key, "
               "song_gender_key, song_signature_numerator, song_signature_denominator, genre_id, "
               "number_of_tracks, sample_rate, created, last_modified, last_updated, alternative_count, "
               "SUFID, "
               "song_signature) VALUES ('%1', '%2', '%3', '%4', '%5', %6, '%7', '%8', %9, %10, %11, %12, "
               "%13, "
               "%14, %15, %16, %17, '%18', '%19');")
        .arg(
            escape(details.filepath), escape(details.filename), escape(details.name),
            escape(data.projectExtension()), escape(data.logicVersion()), tempo(data.bpm()),
            escape(data.songKey()), escape(data.songGenderKey()), decimal(data.songSignatureNumerator()),
            decimal(data.songSignatureDenominator()), QStringLiteral("NULL"), decimal(data.numberOfTracks()),
            decimal(data.sampleRate()), seconds(data.created()), seconds(data.lastModified()),
            decimal(lastUpdated), decimal(data.alternativeCount()), details.sufid.toString(),
            signature(data));
}

QString
update(const ProjectDetails& details, const ProjectData& data, qint64 lastUpdated, long long projectId) {
    return QStringLiteral(
               "UPDATE projects SET logic_version='%1', bpm=%2, song_key='%3', song_gender_key='%4', "
               "song_signature_numerator='%5', song_signature_denominator='%6', number_of_tracks=%7, "
               "sample_rate=%8, last_modified=%9, last_updated=%10, alternative_count=%11, SUFID='%12', "
               "name='%13', filename='%14', filepath='%15', song_signature='%16' WHERE project_id=%17;")
        .arg(
            escape(data.logicVersion()), tempo(data.bpm()), escape(data.songKey()),
            escape(data.songGenderKey()), decimal(data.songSignatureNumerator()),
            decimal(data.songSignatureDenominator()), decimal(data.numberOfTracks()),
            decimal(data.sampleRate()), seconds(data.lastModified()), decimal(lastUpdated),
            decimal(data.alternativeCount()), details.sufid.toString(), escape(details.name),
            escape(details.filename), escape(details.filepath), signature(data), decimal(projectId));
}

QString move(const ProjectDetails& details, long long projectId) {
    return QStringLiteral(
               "UPDATE projects SET filename='%1', filepath='%2', name='%3', SUFID='%4' WHERE project_id=%5")
        .arg(
            escape(details.filename), escape(details.filepath), escape(details.name),
            details.sufid.toString(), decimal(projectId));
}

QString selectFormerIdentities(long long projectId) {
    return QStringLiteral("SELECT SUFID FROM former_identities WHERE project_id=%1").arg(decimal(projectId));
}

QString rememberIdentity(long long projectId, const SystemUniqueFileID& next) {
    return QStringLiteral("INSERT OR IGNORE INTO former_identities SELECT project_id, SUFID FROM projects "
                          "WHERE project_id=%1 AND SUFID NOT IN ('', '%2')")
        .arg(decimal(projectId), next.valid ? next.toString() : QString());
}

QString giveUpIdentity(long long projectId) {
    return QStringLiteral("UPDATE projects SET SUFID='' WHERE project_id=%1").arg(decimal(projectId));
}

QString giveUpPlace(long long projectId) {
    return QStringLiteral("UPDATE projects SET filepath='' WHERE project_id=%1").arg(decimal(projectId));
}

QString selectPossibleDuplicate(long long firstId, long long secondId) {
    return QStringLiteral(
               "SELECT * FROM possible_duplicates WHERE first_project_id=%1 AND second_project_id=%2;")
        .arg(decimal(firstId), decimal(secondId));
}

QString insertPossibleDuplicate(long long firstId, long long secondId) {
    // Without its closing parenthesis on purpose: no duplicate is recorded, only logged.
    return QStringLiteral("INSERT INTO possible_duplicates (first_project_id, second_project_id, reason) "
                          "VALUES (%1, %2, '%3';")
        .arg(
            decimal(firstId), decimal(secondId),
            QStringLiteral("Identical filepath, project name, and extension."));
}

} // namespace Stemhaven::ProjectStatements
