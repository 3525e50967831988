#include "database/QueryBuilder.h"

#include "app/SettingsKeys.h"
#include "database/SqlText.h"

#include <QDebug>
#include <QSettings>

#include <algorithm>

namespace Stemhaven {

namespace {

// A stored list of another length is not taken, although the default list is shorter.
constexpr int acceptedFieldCount = 26;

QList<Field> defaultFields() {
    const auto row = [](const char* name, const QString& displayName, Format format, bool visible,
                        bool searchable) {
        return Field{QString::fromLatin1(name), displayName, format, visible ? 1 : 0, searchable ? 1 : 0, 0};
    };
    QList<Field> fields = {
        row("progress", QueryBuilder::tr("Progress "), Format::Progress, true, false),
        row("name", QueryBuilder::tr("Name"), Format::Text, true, true),
        row("release_name", QueryBuilder::tr("Release Name"), Format::Text, false, true),
        row("artist", QueryBuilder::tr("Artist"), Format::Text, false, true),
        row("album", QueryBuilder::tr("Album"), Format::Text, false, true),
        row("star_rating", QueryBuilder::tr("Rating"), Format::StarRating, true, false),
        row("bpm", QueryBuilder::tr("Tempo"), Format::Text, true, true),
        row("created", QueryBuilder::tr("Created "), Format::DateTime, true, false),
        row("last_modified", QueryBuilder::tr("Last Modified "), Format::DateTime, true, false),
        row("publicly_released", QueryBuilder::tr("Released"), Format::Boolean, true, false),
        row("completed", QueryBuilder::tr("Completed "), Format::Boolean, true, false),
        row("ignored", QueryBuilder::tr("Ignored "), Format::Boolean, false, false),
        row("number_of_tracks", QueryBuilder::tr("Tracks"), Format::Text, true, true),
        row("song_key", QueryBuilder::tr("Key"), Format::Text, true, true),
        row("song_signature", QueryBuilder::tr("Time Signature"), Format::Text, true, true),
        row("release_date", QueryBuilder::tr("Release Date"), Format::Date, false, false),
        row("ISRC", QueryBuilder::tr("ISRC"), Format::Text, false, true),
        row("UPC", QueryBuilder::tr("UPC"), Format::Text, false, true),
        row("logic_version", QueryBuilder::tr("Logic Version"), Format::Text, false, true),
        row("sample_rate", QueryBuilder::tr("Sample Rate"), Format::Text, false, true),
        row("filepath", QueryBuilder::tr("Filepath"), Format::Text, false, true),
        row("filename", QueryBuilder::tr("Filename"), Format::Text, false, false),
    };
    for (std::uint32_t order = 0; auto& field : fields)
        field.order = order++;
    return fields;
}

QString valueOf(const Field& field) {
    return field.expression.isEmpty() ? field.name : field.expression;
}

Field readField(const QSettings& settings, const QString& name) {
    Field field;
    field.name = name;
    field.displayName = settings.value(QStringLiteral("display_name")).toString();
    bool converted = false;
    field.format = static_cast<Format>(settings.value(QStringLiteral("format")).toUInt(&converted));
    field.visible = settings.value(QStringLiteral("visible")).toInt(&converted);
    field.searchable = settings.value(QStringLiteral("searchable")).toInt(&converted);
    field.order = settings.value(QStringLiteral("order")).toUInt(&converted);
    if (!converted)
        qCritical() << "Could not read int value for field: " << name;
    return field;
}

} // namespace

QueryBuilder::QueryBuilder(QObject* parent) : QObject(parent) {}

QueryBuilder* QueryBuilder::defaultProjectsTableBuilder() {
    auto* builder = new QueryBuilder(nullptr);
    builder->loadSettings();
    return builder;
}

void QueryBuilder::loadSettings() {
    QSettings settings;
    qInfo() << "Settings at: " << settings.fileName();
    QList<Field> fields;
    fields.reserve(acceptedFieldCount);
    settings.beginGroup(SettingsKeys::fields);
    const auto names = settings.childGroups();
    for (const auto& name : names) {
        if (!isValidProjectsFieldName(name)) {
            qCritical() << "Invalid field name read from settings!";
            qCritical().noquote().nospace() << "Field: '" << name << "' is unknown... Skipping column";
            continue;
        }
        settings.beginGroup(name);
        fields.append(readField(settings, name));
        settings.endGroup();
    }
    settings.endGroup();

    if (fields.size() != acceptedFieldCount) {
        qDebug() << "Could not read fields from settings. Setting to defaults...";
        fields = defaultFields();
    }
    setFields(fields);
}

void QueryBuilder::saveSettings() const {
    QSettings settings;
    settings.beginGroup(SettingsKeys::fields);
    settings.remove(QString());
    for (const auto& field : m_fields) {
        if (!field.expression.isEmpty())
            continue;
        settings.beginGroup(field.name);
        settings.setValue(QStringLiteral("display_name"), field.displayName);
        settings.setValue(QStringLiteral("format"), static_cast<std::uint32_t>(field.format));
        settings.setValue(QStringLiteral("visible"), field.visible);
        settings.setValue(QStringLiteral("searchable"), field.searchable);
        settings.setValue(QStringLiteral("order"), field.order);
        settings.endGroup();
    }
    settings.endGroup();
}

QString QueryBuilder::select() {
    if (!m_dirty)
        return m_cachedQuery;

    constexpr qsizetype usualLength = 1000;
    QString query;
    query.reserve(usualLength);
    query +=
        QLatin1String("SELECT ") + columnList() + QLatin1String(" project_id FROM projects") + condition();
    if (!m_sortColumn.isEmpty()) {
        query += QStringLiteral(" ORDER BY %1 COLLATE NOCASE %2")
                     .arg(
                         sortValue(),
                         m_sortOrder == Qt::DescendingOrder ? QStringLiteral("DESC") : QStringLiteral("ASC"));
    }
    qDebug() << query;
    m_cachedQuery = query;
    m_dirty = false;
    return query;
}

QString QueryBuilder::sortValue() const {
    const auto sorted = std::find_if(m_fields.cbegin(), m_fields.cend(), [this](const Field& field) {
        return field.name == m_sortColumn;
    });
    return sorted == m_fields.cend() ? m_sortColumn : valueOf(*sorted);
}

QString QueryBuilder::countHidden() const {
    const auto hidden = hideCondition();
    // Not NOT: what is compared may be NULL, and such a project is left out as well.
    QStringList conditions{
        hidden.isEmpty() ? QStringLiteral("0") : QStringLiteral("(%1) IS NOT TRUE").arg(hidden)};
    if (const auto filter = filterCondition(); !filter.isEmpty())
        conditions.append(filter);
    if (searchIsActive())
        conditions.append(searchCondition());
    return QLatin1String("SELECT COUNT(*) FROM projects WHERE ") + conditions.join(QLatin1String(" AND "));
}

QString QueryBuilder::columnList() const {
    QString columns;
    for (const auto& field : m_fields) {
        if (field.visible != 0)
            columns += QStringLiteral(" %1 as '%2 ',").arg(valueOf(field), escape(field.displayName));
    }
    return columns;
}

QString QueryBuilder::condition() const {
    const auto filter = filterCondition();
    const bool searching = searchIsActive();
    const bool hiding = m_hideCompleted || m_hideIgnored;
    if (filter.isEmpty() && !searching && !hiding)
        return {};

    const QLatin1String conjunction(" AND ");
    QString text = QLatin1String(" WHERE ") + filter;
    if (!filter.isEmpty() && (searching || hiding))
        text += conjunction;
    if (searching)
        text += searchCondition() + (hiding ? conjunction : QLatin1String());
    return text + hideCondition();
}

QString QueryBuilder::hideCondition() const {
    QStringList conditions;
    if (m_hideCompleted)
        conditions.append(QStringLiteral("completed=0"));
    if (m_hideIgnored)
        conditions.append(QStringLiteral("ignored=0"));
    return conditions.join(QLatin1String(" AND "));
}

QString QueryBuilder::filterCondition() const {
    const auto id = QString::number(m_filterId);
    switch (m_filter) {
    case Filter::None:
        return {};
    case Filter::Collection:
        return QStringLiteral(
                   "project_id IN (SELECT project_id FROM collections_projects_map WHERE collection_id=%1) ")
            .arg(id);
    case Filter::Genre:
        return QStringLiteral("genre_id='%1'").arg(id);
    case Filter::Tag:
        return QStringLiteral("project_id IN (SELECT project_id FROM project_tag_map WHERE tag_id=%1) ")
            .arg(id);
    case Filter::ArrangementStatus:
        return QStringLiteral("arrangement_status=%1").arg(id);
    case Filter::LyricsStatus:
        return QStringLiteral("lyrics_status=%1").arg(id);
    case Filter::RecordingStatus:
        return QStringLiteral("recording_status=%1").arg(id);
    case Filter::MixMasterStatus:
        return QStringLiteral("mix_master_status=%1").arg(id);
    }
    return {};
}

bool QueryBuilder::searchIsActive() const {
    return !m_searchText.isEmpty() && !m_searchableColumns.isEmpty();
}

QString QueryBuilder::searchCondition() const {
    QStringList alternatives;
    for (const auto& column : m_searchableColumns)
        alternatives.append(column + QLatin1String(" LIKE '%") + m_searchText + QLatin1String("%'"));
    return QLatin1Char('(') + alternatives.join(QLatin1String(" OR ")) + QLatin1Char(')');
}

void QueryBuilder::setFilter(Filter filter, qint64 id) {
    m_filter = filter;
    m_filterId = id;
    m_dirty = true;
}

void QueryBuilder::setCollectionID(qint64 id) {
    setFilter(Filter::Collection, id);
}

void QueryBuilder::setGenreID(qint64 id) {
    setFilter(Filter::Genre, id);
}

void QueryBuilder::setTagID(qint64 id) {
    setFilter(Filter::Tag, id);
}

void QueryBuilder::setArrangementStatusID(qint64 id) {
    setFilter(Filter::ArrangementStatus, id);
}

void QueryBuilder::setLyricsStatusID(qint64 id) {
    setFilter(Filter::LyricsStatus, id);
}

void QueryBuilder::setRecordingStatusID(qint64 id) {
    setFilter(Filter::RecordingStatus, id);
}

void QueryBuilder::setMixMasterStatusID(qint64 id) {
    setFilter(Filter::MixMasterStatus, id);
}

void QueryBuilder::clearFilter() {
    setFilter(Filter::None, -1);
}

void QueryBuilder::hideCompletedTracks(bool hide) {
    m_hideCompleted = hide;
    m_dirty = true;
}

void QueryBuilder::hideIgnoredTracks(bool hide) {
    m_hideIgnored = hide;
    m_dirty = true;
}

void QueryBuilder::search(const QString& text) {
    m_searchText = text;
    m_dirty = true;
}

void QueryBuilder::clearSearch() {
    search(QString());
}

void QueryBuilder::sortBy(const QString& column, Qt::SortOrder order) {
    m_sortColumn = column;
    m_sortOrder = order;
    m_dirty = true;
}

void QueryBuilder::clearSorting() {
    m_sortColumn.clear();
    m_dirty = true;
}

QList<Field> QueryBuilder::getFields() const {
    return m_fields;
}

void QueryBuilder::setFields(const QList<Field>& fields) {
    m_fields = fields;
    m_dirty = true;
    std::sort(
        m_fields.begin(), m_fields.end(), [](const Field& a, const Field& b) { return a.order < b.order; });
    m_searchableColumns.clear();
    for (const auto& field : m_fields) {
        if (field.visible != 0 && field.searchable != 0)
            m_searchableColumns.append(valueOf(field));
    }
}

Field QueryBuilder::fieldAt(unsigned short index) const {
    return m_fields.value(index);
}

Field QueryBuilder::visibleFieldAt(unsigned short index) const {
    int remaining = index;
    for (const auto& field : m_fields) {
        if (field.visible != 0 && remaining-- == 0)
            return field;
    }
    return {};
}

Format QueryBuilder::visibleFieldFormat(unsigned short index) const {
    return visibleFieldAt(index).format;
}

QList<Format> QueryBuilder::visibleFieldFormats() const {
    QList<Format> formats;
    for (const auto& field : m_fields) {
        if (field.visible != 0)
            formats.append(field.format);
    }
    return formats;
}

bool QueryBuilder::fieldHasFormat(unsigned short index, Format format) const {
    return index < m_fields.size() && m_fields[index].format == format;
}

unsigned short QueryBuilder::fieldIndexByName(const QString& name) const {
    constexpr unsigned short none = 0xFFFF;
    unsigned short index = 0;
    for (const auto& field : m_fields) {
        if (field.visible == 0)
            continue;
        if (field.name == name)
            return index;
        ++index;
    }
    return none;
}

} // namespace Stemhaven
