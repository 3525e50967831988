#include "database/DerivedFields.h"

#include "database/FilterType.h"
#include "database/QueryBuilder.h"

namespace Stemhaven {

namespace {

/// The name of the entry that a column of the project refers to.
QString nameOfEntry(FilterType type, const QString& column) {
    const QString table = filterTypeTable(type);
    return QStringLiteral("(SELECT name FROM %1 WHERE %1.%2=projects.%3)")
        .arg(table, filterTypeIdColumn(type), column);
}

/// The last part of the path, which ends with a slash. What rtrim() takes away are all characters of the path
/// but slashes.
QString nameOfFolder() {
    return QStringLiteral("substr(rtrim(filepath, '/'), 1 + length(rtrim(rtrim(filepath, '/'), "
                          "replace(filepath, '/', ''))))");
}

Field field(const char* name, const QString& displayName, bool searchable, const QString& expression) {
    return {QString::fromLatin1(name), displayName, Format::Text, 0, searchable ? 1 : 0, 0, expression};
}

Field status(const char* name, const QString& displayName, FilterType type) {
    return field(name, displayName, true, nameOfEntry(type, tableNameForStatus(type)));
}

} // namespace

QList<Field> derivedFields() {
    return {
        field(
            "genre", QueryBuilder::tr("Genre"), true,
            nameOfEntry(FilterType::GENRES, QStringLiteral("genre_id"))),
        field("folder", QueryBuilder::tr("Folder"), true, nameOfFolder()),
        status("arrangement", QueryBuilder::tr("Arrangement"), FilterType::ARRANGEMENT_STATUS),
        status("lyrics", QueryBuilder::tr("Lyrics"), FilterType::LYRICS_STATUS),
        status("recording", QueryBuilder::tr("Recording"), FilterType::RECORDING_STATUS),
        status("mix_master", QueryBuilder::tr("Mix/Master"), FilterType::MIX_MASTER_STATUS)};
}

} // namespace Stemhaven
