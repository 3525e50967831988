#include "database/UserDataStatements.h"

#include "database/ProjectStatements.h"
#include "database/SqlText.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <utility>

namespace Stemhaven::UserDataStatements {

namespace {

QString decimal(qint64 value) {
    return QString::number(value);
}

QString list(const QList<qint64>& ids) {
    QStringList texts;
    texts.reserve(ids.size());
    for (const qint64 id : ids)
        texts.append(decimal(id));
    return QLatin1Char('(') + texts.join(QLatin1Char(',')) + QLatin1Char(')');
}

QStringList quoted(const QStringList& columns) {
    QStringList expressions;
    for (const auto& column : columns)
        expressions.append(QStringLiteral("quote(%1)").arg(column));
    return expressions;
}

/// By project_id; the record itself last.
constexpr std::array tablesOfRecords{
    "collections_projects_map", "project_tag_map", "former_identities", "projects"};

} // namespace

QString selectProject(qint64 projectId) {
    return QStringLiteral("SELECT * FROM projects WHERE project_id=%1").arg(decimal(projectId));
}

QString selectSummary(const QList<qint64>& projectIds) {
    QStringList columns{
        QStringLiteral("COUNT(*) AS count"), QStringLiteral("SUM(ignored<>0) AS ignored_count")};
    const auto addRange = [&](const QString& name, const QString& value) {
        columns.append(QStringLiteral("MIN(%1) AS min_%2, MAX(%1) AS max_%2").arg(value, name));
    };
    // A value that was never set counts as the one that is shown for it.
    QStringList zeroByDefault{QStringLiteral("star_rating")};
    for (const FilterType status : statusFilterTypes)
        zeroByDefault.append(tableNameForStatus(status));
    const auto addValues = [&](const QString& name, const QString& value) {
        addRange(name, value);
        columns.append(QStringLiteral("GROUP_CONCAT(DISTINCT %1) AS all_%2").arg(value, name));
    };
    for (const QString& column : std::as_const(zeroByDefault))
        addValues(column, QStringLiteral("COALESCE(%1, 0)").arg(column));
    addValues(QStringLiteral("progress_percent"), QStringLiteral("ROUND(COALESCE(progress, 0) * 100)"));
    addRange(QStringLiteral("bpm"), QStringLiteral("bpm"));
    addRange(
        QStringLiteral("time_signature"),
        QStringLiteral("COALESCE(song_signature_numerator, '') || '/' || "
                       "COALESCE(song_signature_denominator, '')"));
    addRange(QStringLiteral("song_key"), QStringLiteral("COALESCE(song_key, '')"));
    addRange(QStringLiteral("filepath"), QStringLiteral("filepath"));
    return QStringLiteral("SELECT %1 FROM projects WHERE project_id IN %2")
        .arg(columns.join(QLatin1String(", ")), list(projectIds));
}

QString selectEntryCounts(const QList<qint64>& projectIds) {
    const auto type = [](FilterType filter) {
        return decimal(static_cast<int>(filter));
    };
    return QStringLiteral(
               "WITH selected AS (SELECT project_id, genre_id FROM projects WHERE project_id IN %4) "
               "SELECT %1, collection_id, COUNT(DISTINCT project_id) FROM collections_projects_map "
               "WHERE project_id IN (SELECT project_id FROM selected) GROUP BY collection_id "
               "UNION ALL SELECT %2, genre_id, COUNT(*) FROM selected "
               "WHERE genre_id IS NOT NULL GROUP BY genre_id "
               "UNION ALL SELECT %3, tag_id, COUNT(DISTINCT project_id) FROM project_tag_map "
               "WHERE project_id IN (SELECT project_id FROM selected) GROUP BY tag_id")
        .arg(
            type(FilterType::COLLECTIONS), type(FilterType::GENRES), type(FilterType::TAGS),
            list(projectIds));
}

QString associate(FilterType type, qint64 filterId, qint64 projectId) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral("INSERT INTO collections_projects_map VALUES(%1, %2)")
            .arg(decimal(filterId), decimal(projectId));
    case FilterType::GENRES:
        return QStringLiteral("UPDATE projects SET genre_id=%1 WHERE project_id=%2")
            .arg(decimal(filterId), decimal(projectId));
    case FilterType::TAGS:
        return QStringLiteral("INSERT INTO project_tag_map VALUES(%1, %2)")
            .arg(decimal(projectId), decimal(filterId));
    default:
        return {};
    }
}

QString disassociate(FilterType type, qint64 filterId, qint64 projectId) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral("DELETE FROM collections_projects_map WHERE collection_id=%1 AND project_id=%2")
            .arg(decimal(filterId), decimal(projectId));
    case FilterType::GENRES:
        return QStringLiteral("UPDATE projects SET genre_id=NULL WHERE project_id=%1")
            .arg(decimal(projectId));
    case FilterType::TAGS:
        return QStringLiteral("DELETE FROM project_tag_map WHERE project_id=%1 AND tag_id=%2")
            .arg(decimal(projectId), decimal(filterId));
    default:
        return {};
    }
}

QString replaceReference(FilterType type, qint64 fromEntry, qint64 toEntry, qint64 projectId) {
    return QStringLiteral("UPDATE projects SET %1=%2 WHERE project_id=%3 AND %1=%4")
        .arg(
            type == FilterType::GENRES ? QStringLiteral("genre_id") : tableNameForStatus(type),
            decimal(toEntry), decimal(projectId), decimal(fromEntry));
}

QString selectAssociated(FilterType type, qint64 filterId, const QList<qint64>& projectIds) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral("SELECT DISTINCT project_id FROM collections_projects_map WHERE "
                              "collection_id=%1 AND project_id IN %2")
            .arg(decimal(filterId), list(projectIds));
    case FilterType::TAGS:
        return QStringLiteral(
                   "SELECT DISTINCT project_id FROM project_tag_map WHERE tag_id=%1 AND project_id IN %2")
            .arg(decimal(filterId), list(projectIds));
    case FilterType::GENRES:
        return QStringLiteral("SELECT project_id FROM projects WHERE genre_id=%1 AND project_id IN %2")
            .arg(decimal(filterId), list(projectIds));
    default:
        return {};
    }
}

QString selectNotAssociated(FilterType type, qint64 filterId, const QList<qint64>& projectIds) {
    const QString associated = selectAssociated(type, filterId, projectIds);
    if (associated.isEmpty())
        return {};
    return QStringLiteral("SELECT project_id FROM projects WHERE project_id IN %1 AND project_id NOT IN (%2) "
                          "AND EXISTS (SELECT 1 FROM %3 WHERE %4=%5)")
        .arg(
            list(projectIds), associated, filterTypeTable(type), filterTypeIdColumn(type), decimal(filterId));
}

QString selectLiterals(const QStringList& columns, const QList<qint64>& projectIds) {
    return QStringLiteral("SELECT project_id, %1 FROM projects WHERE project_id IN %2")
        .arg(quoted(columns).join(QLatin1String(", ")), list(projectIds));
}

QString setLiterals(const QStringList& columns, const QStringList& literals, qint64 projectId) {
    QStringList assignments;
    for (qsizetype i = 0; i < std::min(columns.size(), literals.size()); ++i)
        assignments.append(columns[i] + QLatin1Char('=') + literals[i]);
    return QStringLiteral("UPDATE projects SET ") + assignments.join(QLatin1String(", ")) +
        QStringLiteral(" WHERE project_id=") + decimal(projectId);
}

QString deleteProject(qint64 projectId) {
    return QStringLiteral("DELETE FROM projects WHERE project_id=%1").arg(decimal(projectId));
}

QStringList deleteAssociations(qint64 projectId) {
    return {
        QStringLiteral("DELETE FROM collections_projects_map WHERE project_id=%1").arg(decimal(projectId)),
        QStringLiteral("DELETE FROM project_tag_map WHERE project_id=%1").arg(decimal(projectId)),
        QStringLiteral("DELETE FROM former_identities WHERE project_id=%1").arg(decimal(projectId))};
}

QString selectAsInserts(const QList<qint64>& projectIds) {
    const QStringList& columns = projectsFieldNames();
    const QString values = quoted(columns).join(QLatin1String(" || ',' || "));
    return QStringLiteral(
               "SELECT 'projects', project_id, 'INSERT INTO projects (%1) VALUES (' || %2 || ')' "
               "FROM projects WHERE project_id IN %3 "
               "UNION ALL SELECT 'projects', project_id, 'INSERT INTO former_identities VALUES (' || "
               "project_id || ',' || quote(SUFID) || ')' FROM former_identities WHERE project_id IN %3 "
               "UNION ALL SELECT 'collections', collection_id, project_id "
               "FROM collections_projects_map WHERE project_id IN %3 "
               "UNION ALL SELECT 'tags', tag_id, project_id "
               "FROM project_tag_map WHERE project_id IN %3")
        .arg(columns.join(QLatin1String(", ")), values, list(projectIds));
}

QString selectUntouched(qint64 projectId) {
    QStringList conditions;
    for (const char* text : {"artist", "release_name", "ISRC", "UPC", "album", "notes"})
        conditions.append(QStringLiteral("COALESCE(%1, '')=''").arg(QLatin1String(text)));
    for (const char* number :
         {"publicly_released", "genre_id", "progress", "completed", "ignored", "release_date", "star_rating",
          "arrangement_status", "lyrics_status", "recording_status", "mix_master_status"})
        conditions.append(QStringLiteral("COALESCE(%1, 0)=0").arg(QLatin1String(number)));
    for (const char* table : {"collections_projects_map", "project_tag_map", "associated_files"})
        conditions.append(QStringLiteral("project_id NOT IN (SELECT project_id FROM %1 WHERE project_id=%2)")
                              .arg(QLatin1String(table), decimal(projectId)));
    return QStringLiteral("SELECT 1 FROM projects WHERE project_id=%1 AND %2")
        .arg(decimal(projectId), conditions.join(QLatin1String(" AND ")));
}

QStringList copy(qint64 fromProjectId, qint64 toProjectId) {
    const QString columns = QStringLiteral(
        "artist, release_name, publicly_released, ISRC, UPC, album, genre_id, notes, progress, completed, "
        "ignored, release_date, star_rating, arrangement_status, lyrics_status, recording_status, "
        "mix_master_status");
    const QString from = decimal(fromProjectId);
    const QString to = decimal(toProjectId);
    return {
        QStringLiteral("UPDATE projects SET (%1)=(SELECT %1 FROM projects WHERE project_id=%2) WHERE "
                       "project_id=%3")
            .arg(columns, from, to),
        QStringLiteral("INSERT INTO collections_projects_map (collection_id, project_id) SELECT "
                       "collection_id, %2 FROM collections_projects_map WHERE project_id=%1")
            .arg(from, to),
        QStringLiteral("INSERT INTO project_tag_map (project_id, tag_id) SELECT %2, tag_id FROM "
                       "project_tag_map WHERE project_id=%1")
            .arg(from, to),
        QStringLiteral("INSERT INTO associated_files (project_id, filepath) SELECT %2, filepath FROM "
                       "associated_files WHERE project_id=%1")
            .arg(from, to)};
}

QString selectTaken(const QList<qint64>& projectIds) {
    return QStringLiteral("SELECT project_id, (SELECT MAX(project_id) FROM projects) FROM projects WHERE "
                          "project_id IN %1 ORDER BY project_id")
        .arg(list(projectIds));
}

QStringList moveProject(qint64 from, qint64 to) {
    QStringList statements;
    for (const char* table : tablesOfRecords) {
        statements.append(QStringLiteral("UPDATE %1 SET project_id=%2 WHERE project_id=%3")
                              .arg(QLatin1String(table), decimal(to), decimal(from)));
    }
    return statements;
}

QStringList settleRestoredProject(qint64 projectId) {
    const QString id = decimal(projectId);
    const QString sameBundle =
        QStringLiteral("SELECT project_id FROM projects WHERE project_id<>%1 AND filename=(SELECT filename "
                       "FROM projects WHERE project_id=%1) AND filepath=(SELECT filepath FROM projects WHERE "
                       "project_id=%1) AND filepath<>''")
            .arg(id);
    QStringList statements;
    for (const char* table : tablesOfRecords) {
        statements.append(
            QStringLiteral("DELETE FROM %1 WHERE project_id IN (%2)").arg(QLatin1String(table), sameBundle));
    }
    const QString hasOther =
        QStringLiteral(" AND EXISTS (SELECT 1 FROM projects AS other WHERE other.SUFID=projects.SUFID AND "
                       "other.project_id<>%1 AND other.SUFID<>'')")
            .arg(id);
    statements << ProjectStatements::rememberIdentity(projectId, {}) + hasOther
               << ProjectStatements::giveUpIdentity(projectId) + hasOther;
    return statements;
}

} // namespace Stemhaven::UserDataStatements
