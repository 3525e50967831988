#include "database/FilterType.h"

#include <algorithm>

namespace {

struct Description {
    const char* debugName = "";
    const char* table = "";
    const char* idColumn = "";
    const char* nameColumn = "";
    bool modifyable = false;
};

constexpr std::array<Description, allFilterTypes.size()> descriptions{{
    {.debugName = "ALL"},
    {.debugName = "LAST_SEARCH"},
    {"SAVED_SEARCH", "saved_searches", "saved_search_id", "search_term", true},
    {"COLLECTIONS", "collections", "collection_id", "name", true},
    {"GENRES", "genres", "genre_id", "name", true},
    {"TAGS", "tags", "tag_id", "name", true},
    {"ARRANGEMENT_STATUS", "arrangement_status", "arrangement_status_id", "name"},
    {"LYRICS_STATUS", "lyrics_status", "lyrics_status_id", "name"},
    {"RECORDING_STATUS", "recording_status", "recording_status_id", "name"},
    {"MIX_MASTER_STATUS", "mix_master_status", "mix_master_status_id", "name"},
}};

/// Null for a value that the enumeration does not name.
const Description* describe(FilterType type) {
    const auto index = static_cast<std::size_t>(type);
    return index < descriptions.size() ? &descriptions.at(index) : nullptr;
}

QString text(FilterType type, const char* Description::*member) {
    const auto* description = describe(type);
    return description ? QString::fromLatin1(description->*member) : QString();
}

} // namespace

QString filterTypeTable(FilterType type) {
    return text(type, &Description::table);
}

QString filterTypeIdColumn(FilterType type) {
    return text(type, &Description::idColumn);
}

QString filterTypeNameColumn(FilterType type) {
    return text(type, &Description::nameColumn);
}

bool filterTypeIsModifyable(FilterType type) {
    const auto* description = describe(type);
    return description && description->modifyable;
}

bool filterTypeIsStatus(FilterType type) {
    return std::find(statusFilterTypes.begin(), statusFilterTypes.end(), type) != statusFilterTypes.end();
}

QString tableNameForStatus(FilterType type) {
    return filterTypeIsStatus(type) ? filterTypeTable(type) : QString();
}

QString idFieldNameForStatus(FilterType type) {
    return filterTypeIsStatus(type) ? filterTypeIdColumn(type) : QString();
}

QString filterTypeDebugText(FilterType type) {
    const auto* description = describe(type);
    return description ? QStringLiteral("FilterType::") + QLatin1String(description->debugName)
                       : QStringLiteral("(Invalid FilterType)");
}

QDebug operator<<(QDebug debug, FilterType type) {
    const QDebugStateSaver saver(debug);
    debug.noquote() << filterTypeDebugText(type);
    return debug;
}
