#pragma once

#include <QString>

class QSqlQuery;

/// What the window needs to know of the current project alone.
struct ProjectRecord {
    qint64 id = -1;
    QString name;
    QString bundlePath;
    QString details; ///< tempo, time signature and key in a line
    int progressPercent = 0;
    qint64 lastModified = 0;

    bool isValid() const { return id >= 0; }
};

/// From the row that query stands on, which has all columns of the record.
ProjectRecord readProjectRecord(const QSqlQuery& query);
