#include "database/FilterStatements.h"

#include "database/SqlText.h"

namespace Stemhaven::FilterStatements {

namespace {

/// The column of the projects that has the id of their entry of that type.
QString referringColumn(FilterType type) {
    // A status's column is called as the table.
    return type == FilterType::GENRES ? filterTypeIdColumn(type) : filterTypeTable(type);
}

/// Empty for saved searches, which no project uses.
QString projectsThatUse(FilterType type, qint64 id) {
    const QString select = QStringLiteral("SELECT project_id FROM %1 WHERE %2=%3");
    switch (type) {
    case FilterType::SAVED_SEARCH:
        return {};
    case FilterType::COLLECTIONS:
        return select.arg(
            QStringLiteral("collections_projects_map"), filterTypeIdColumn(type), QString::number(id));
    case FilterType::TAGS:
        return select.arg(QStringLiteral("project_tag_map"), filterTypeIdColumn(type), QString::number(id));
    default:
        return select.arg(QStringLiteral("projects"), referringColumn(type), QString::number(id));
    }
}

} // namespace

QString selectEntries(FilterType type) {
    const QString name = filterTypeNameColumn(type);
    const QString id = filterTypeIdColumn(type);
    const QString columns = type == FilterType::GENRES ? QStringLiteral("DISTINCT name") : name;
    const QString order = filterTypeIsStatus(type) ? id : name + QStringLiteral(" COLLATE NOCASE");
    return QStringLiteral("SELECT %1, %2 FROM %3 WHERE %4 != '' ORDER BY %5 ASC;")
        .arg(columns, id, filterTypeTable(type), name, order);
}

QString selectStatuses(FilterType type) {
    // Without a wish for their order they come by their ids.
    return QStringLiteral("SELECT name, %1 FROM %2")
        .arg(idFieldNameForStatus(type), tableNameForStatus(type));
}

QString selectNames(FilterType type) {
    return QStringLiteral("SELECT %1 FROM %2").arg(filterTypeNameColumn(type), filterTypeTable(type));
}

QStringList newEntryLiterals(FilterType type, const QString& name) {
    QStringList literals{QLatin1Char('\'') + escape(name) + QLatin1Char('\'')};
    if (type == FilterType::GENRES)
        literals.append(QStringLiteral("NULL"));
    return literals;
}

QString selectFreeId(FilterType type, qint64 wishedId) {
    return QStringLiteral("SELECT CASE WHEN %3<0 OR EXISTS (SELECT 1 FROM %1 WHERE %2=%3) "
                          "THEN (SELECT COALESCE(MAX(%2), 0) + 1 FROM %1) ELSE %3 END")
        .arg(filterTypeTable(type), filterTypeIdColumn(type), QString::number(wishedId));
}

QString insertLiterals(FilterType type, qint64 id, const QStringList& literals) {
    // Not by placeholders: a name may look like one.
    return QStringLiteral("INSERT INTO ") + filterTypeTable(type) + QStringLiteral(" VALUES (") +
        QString::number(id) + QStringLiteral(", ") + literals.join(QLatin1String(", ")) + QLatin1Char(')');
}

QString selectName(FilterType type, qint64 id) {
    return QStringLiteral("SELECT %1 FROM %2 WHERE %3=%4")
        .arg(
            filterTypeNameColumn(type), filterTypeTable(type), filterTypeIdColumn(type), QString::number(id));
}

QString rename(FilterType type, qint64 id, const QString& name) {
    return QStringLiteral("UPDATE %1 SET %2='%3' WHERE %4=%5")
        .arg(
            filterTypeTable(type), filterTypeNameColumn(type), escape(name), filterTypeIdColumn(type),
            QString::number(id));
}

QString selectProjectNames(FilterType type, qint64 id) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral("SELECT name FROM projects WHERE project_id IN "
                              "(SELECT project_id FROM collections_projects_map WHERE collection_id=%1);")
            .arg(id);
    case FilterType::GENRES:
        return QStringLiteral("SELECT name FROM projects WHERE genre_id=%1;").arg(id);
    case FilterType::TAGS:
        return QStringLiteral("SELECT name FROM projects WHERE project_id IN "
                              "(SELECT project_id FROM project_tag_map WHERE tag_id=%1);")
            .arg(id);
    case FilterType::ARRANGEMENT_STATUS:
        return QStringLiteral("SELECT name FROM projects WHERE arrangement_status=%1;").arg(id);
    case FilterType::LYRICS_STATUS:
        return QStringLiteral("SELECT name FROM projects WHERE lyrics_status=%1").arg(id);
    case FilterType::RECORDING_STATUS:
        return QStringLiteral("SELECT name FROM projects WHERE recording_status=%1").arg(id);
    case FilterType::MIX_MASTER_STATUS:
        return QStringLiteral("SELECT name FROM projects WHERE mix_master_status=%1").arg(id);
    default:
        return {};
    }
}

QString remove(FilterType type, qint64 id) {
    const bool hasSemicolon = type == FilterType::SAVED_SEARCH || type == FilterType::COLLECTIONS;
    return QStringLiteral("DELETE FROM %1 WHERE %2=%3%4")
        .arg(
            filterTypeTable(type), filterTypeIdColumn(type), QString::number(id),
            hasSemicolon ? QStringLiteral(";") : QString());
}

QString removeReferences(FilterType type, qint64 id) {
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral("DELETE FROM collections_projects_map WHERE collection_id=%1").arg(id);
    case FilterType::GENRES:
        return QStringLiteral("UPDATE projects SET genre_id=NULL WHERE genre_id=%1;").arg(id);
    case FilterType::TAGS:
        return QStringLiteral("DELETE FROM project_tag_map WHERE tag_id=%1").arg(id);
    case FilterType::ARRANGEMENT_STATUS:
    case FilterType::LYRICS_STATUS:
    case FilterType::RECORDING_STATUS:
    case FilterType::MIX_MASTER_STATUS:
        // The projects' columns have the names of the tables.
        return QStringLiteral("UPDATE projects SET %1=%2 WHERE %1=%3")
            .arg(filterTypeTable(type), QString::number(defaultStatusId), QString::number(id));
    default:
        return {};
    }
}

QString selectForRemoval(FilterType type, qint64 id) {
    const bool isGenre = type == FilterType::GENRES;
    const QString exists = QStringLiteral("EXISTS (SELECT 1 FROM %1 WHERE %2=%3)")
                               .arg(filterTypeTable(type), filterTypeIdColumn(type), QString::number(id));
    const QString entry =
        QStringLiteral("SELECT '', quote(%1)%2 FROM %3 WHERE %4=%5")
            .arg(
                filterTypeNameColumn(type), isGenre ? QStringLiteral(", quote(subdir)") : QString(),
                filterTypeTable(type), filterTypeIdColumn(type), QString::number(id));
    const QString users = projectsThatUse(type, id);
    if (users.isEmpty())
        return entry;
    return QStringLiteral("%1 UNION ALL SELECT project_id, ''%2 FROM (%3) WHERE %4")
        .arg(entry, isGenre ? QStringLiteral(", ''") : QString(), users, exists);
}

QString restoreReferences(FilterType type, qint64 id, const QList<qint64>& projectIds) {
    QStringList ids;
    for (const qint64 project : projectIds)
        ids.append(QString::number(project));
    const QString projects = ids.join(QLatin1Char(','));
    switch (type) {
    case FilterType::COLLECTIONS:
        return QStringLiteral(
                   "INSERT INTO collections_projects_map SELECT %1, project_id FROM projects WHERE "
                   "project_id IN (%2)")
            .arg(QString::number(id), projects);
    case FilterType::TAGS:
        return QStringLiteral(
                   "INSERT INTO project_tag_map SELECT project_id, %1 FROM projects WHERE project_id IN (%2)")
            .arg(QString::number(id), projects);
    default:
        return QStringLiteral("UPDATE projects SET %1=%2 WHERE project_id IN (%3)")
            .arg(referringColumn(type), QString::number(id), projects);
    }
}

QString whereExists(const QString& select, FilterType type, qint64 id) {
    return select +
        QStringLiteral(" AND EXISTS (SELECT 1 FROM %1 WHERE %2=%3)")
            .arg(filterTypeTable(type), filterTypeIdColumn(type), QString::number(id));
}

} // namespace Stemhaven::FilterStatements
