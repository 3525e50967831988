#pragma once

#include "database/FilterType.h"

#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>

#include <optional>

class QSqlQuery;

/// What one or several selected projects have in common. A value is empty where they differ.
struct SelectionSummary {
    int count = 0; ///< of records; less than are selected where some are gone
    int ignoredCount = 0;
    std::optional<int> stars;
    std::optional<int> progressPercent;
    QMap<FilterType, std::optional<qint64>> statuses;
    // All that there are.
    QSet<qint64> presentStars;
    QSet<qint64> presentPercents; ///< of progress
    QMap<FilterType, QSet<qint64>> presentStatuses;
    std::optional<QString> tempo;
    std::optional<QString> timeSignature;
    std::optional<QString> key;
    std::optional<QString> folder;
    /// How many of the projects each collection, genre and tag has; those with none are left out.
    QMap<FilterType, QHash<qint64, int>> entryCounts;

    bool areAllIgnored() const { return count > 0 && ignoredCount == count; }
};

/// From the row of UserDataStatements::selectSummary(). Without the counts of entries.
SelectionSummary readSelectionSummary(const QSqlQuery& row);

/// Adds a row of UserDataStatements::selectEntryCounts().
void addEntryCount(SelectionSummary& summary, const QSqlQuery& row);
