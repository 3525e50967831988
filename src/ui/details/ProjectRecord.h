#pragma once

#include "database/FilterType.h"

#include <QMap>
#include <QSet>
#include <QString>

class QSqlQuery;

/// What the window needs to know of the selected project.
struct ProjectRecord {
    qint64 id = -1;
    QString name;
    QString bundlePath;
    QString details; ///< tempo, time signature and key in a line
    bool ignored = false;
    int stars = 0;
    int progressPercent = 0;
    QMap<FilterType, qint64> statuses;
    QSet<qint64> genres; ///< one at most
    QSet<qint64> collections;
    QSet<qint64> tags;
    qint64 lastModified = 0;

    bool isValid() const { return id >= 0; }

    /// The associations with the entries of that type: collections, genres or tags.
    QSet<qint64> associations(FilterType type) const;
};

/// From the row that query stands on, which has all columns of the record. Without collections and tags.
ProjectRecord readProjectRecord(const QSqlQuery& query);
