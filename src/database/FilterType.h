#pragma once

#include <QDebug>
#include <QString>

#include <array>
#include <cstdint>

/// What a list of projects can be narrowed by: the groups of the sidebar, in their order.
enum class FilterType : std::uint8_t {
    ALL = 0,
    LAST_SEARCH = 1,
    SAVED_SEARCH = 2,
    COLLECTIONS = 3,
    GENRES = 4,
    TAGS = 5,
    ARRANGEMENT_STATUS = 6,
    LYRICS_STATUS = 7,
    RECORDING_STATUS = 8,
    MIX_MASTER_STATUS = 9
};

inline constexpr std::array allFilterTypes{
    FilterType::ALL,
    FilterType::LAST_SEARCH,
    FilterType::SAVED_SEARCH,
    FilterType::COLLECTIONS,
    FilterType::GENRES,
    FilterType::TAGS,
    FilterType::ARRANGEMENT_STATUS,
    FilterType::LYRICS_STATUS,
    FilterType::RECORDING_STATUS,
    FilterType::MIX_MASTER_STATUS};

inline constexpr std::array statusFilterTypes{
    FilterType::ARRANGEMENT_STATUS, FilterType::LYRICS_STATUS, FilterType::RECORDING_STATUS,
    FilterType::MIX_MASTER_STATUS};

/// The id of the default status of each kind, which can be renamed but never removed.
inline constexpr qint64 defaultStatusId = 0;

/// The table that holds the entries of a type, and its columns. Empty for the types that have none.
QString filterTypeTable(FilterType type);
QString filterTypeIdColumn(FilterType type);
QString filterTypeNameColumn(FilterType type);

/// Whether the user may add and remove entries in the sidebar; statuses are edited in the preferences.
bool filterTypeIsModifyable(FilterType type);
bool filterTypeIsStatus(FilterType type);

/// As filterTypeTable and filterTypeIdColumn, for the four kinds of status only.
QString tableNameForStatus(FilterType type);
QString idFieldNameForStatus(FilterType type);

/// What the log calls a type, "FilterType::TAGS" for example.
QString filterTypeDebugText(FilterType type);
QDebug operator<<(QDebug debug, FilterType type);
