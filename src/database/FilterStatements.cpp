#include "database/FilterStatements.h"

#include "database/SqlText.h"

namespace Stemhaven::FilterStatements {

QString selectEntries(FilterType type) {
    const QString name = filterTypeNameColumn(type);
    const QString id = filterTypeIdColumn(type);
    const QString columns = type == FilterType::GENRES ? QStringLiteral("DISTINCT name") : name;
    const QString order = filterTypeIsStatus(type) ? id : name + QStringLiteral(" COLLATE NOCASE");
    return QStringLiteral("SELECT %1, %2 FROM %3 WHERE %4 != '' ORDER BY %5 ASC;")
        .arg(columns, id, filterTypeTable(type), name, order);
}

QString selectNames(FilterType type) {
    return QStringLiteral("SELECT %1 FROM %2").arg(filterTypeNameColumn(type), filterTypeTable(type));
}

QString insert(FilterType type, const QString& name) {
    const QString subdir = type == FilterType::GENRES ? QStringLiteral(", NULL") : QString();
    return QStringLiteral("INSERT INTO %1 VALUES (NULL, '%2'%3)")
        .arg(filterTypeTable(type), escape(name), subdir);
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

} // namespace Stemhaven::FilterStatements
