#pragma once

#include "database/Field.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace Stemhaven {

/// Makes the statement that lists the projects, from the columns, the sidebar's filter, the search, the two
/// hide switches and the sort. Used on the GUI thread only.
class QueryBuilder : public QObject {
    Q_OBJECT

public:
    /// No columns, no filter, no search, no sort, completed and ignored projects hidden. Reads no settings.
    explicit QueryBuilder(QObject* parent = nullptr);

    /// With the columns from the settings. The caller owns it.
    static QueryBuilder* defaultProjectsTableBuilder();

    /// Takes the stored columns, or the default ones where the stored ones are not accepted.
    void loadSettings();
    /// Without fields that have an expression, which loadSettings() would not take.
    void saveSettings() const;

    /// The visible columns in their order, each under its display name and a blank, and project_id as the
    /// last column.
    QString select();

    /// One row with the number of projects that are left out by the hide switches alone.
    QString countHidden() const;

    /// Each of these replaces any filter set before.
    void setCollectionID(qint64 id);
    void setGenreID(qint64 id);
    void setTagID(qint64 id);
    void setArrangementStatusID(qint64 id);
    void setLyricsStatusID(qint64 id);
    void setRecordingStatusID(qint64 id);
    void setMixMasterStatusID(qint64 id);
    void clearFilter();

    void hideCompletedTracks(bool hide);
    void hideIgnoredTracks(bool hide);

    /// text goes into the statement as it is: the caller has passed it through escape().
    void search(const QString& text);
    void clearSearch();

    /// column is a valid column name.
    void sortBy(const QString& column, Qt::SortOrder order);
    void clearSorting();

    /// Empty where nothing is sorted.
    const QString& sortColumn() const { return m_sortColumn; }

    /// Sorted by their order.
    QList<Field> getFields() const;
    void setFields(const QList<Field>& fields);

    /// Of all fields; a default field when index is out of range.
    Field fieldAt(unsigned short index) const;
    /// Of the visible fields, which are the table's columns; a default field when index is out of range.
    Field visibleFieldAt(unsigned short index) const;
    Format visibleFieldFormat(unsigned short index) const;
    /// Of all visible fields, in their order.
    QList<Format> visibleFieldFormats() const;
    /// Of all fields, unlike visibleFieldFormat; false when index is out of range.
    bool fieldHasFormat(unsigned short index, Format format) const;
    /// Among the visible fields; 0xFFFF when there is none of that name.
    unsigned short fieldIndexByName(const QString& name) const;

private:
    enum class Filter : std::uint16_t {
        None = 0,
        Collection = 1,
        Genre = 2,
        Tag = 3,
        ArrangementStatus = 4,
        LyricsStatus = 5,
        RecordingStatus = 6,
        MixMasterStatus = 7
    };

    void setFilter(Filter filter, qint64 id);
    bool searchIsActive() const;
    QString columnList() const;
    QString sortValue() const;
    QString filterCondition() const;
    QString searchCondition() const;
    QString condition() const;
    QString hideCondition() const;

    QList<Field> m_fields;
    QStringList m_searchableColumns;
    QString m_searchText;
    QString m_sortColumn;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QString m_cachedQuery;
    bool m_dirty = true;
    Filter m_filter = Filter::None;
    qint64 m_filterId = -1;
    bool m_hideCompleted = true;
    bool m_hideIgnored = true;
};

} // namespace Stemhaven
