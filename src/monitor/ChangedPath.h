#pragma once

#include "project/ProjectDetails.h"

#include <QDebug>
#include <QList>
#include <QString>

#include <optional>

namespace Stemhaven {

/// The successive paths that one file system object took in a series of renames.
class ChangedPath {
public:
    struct Entry {
        /// Looks whether path is there now.
        Entry(QString path, unsigned long long eventID);
        ProjectDetails getProjectDetails() const;

        QString path;
        unsigned long long eventID;
        bool found;
    };

    /// The first entry gives the object's id; one with another id is logged and left out.
    void addEntry(const QString& path, unsigned long long eventID, unsigned long long fileID);

    /// -1 when there are no entries.
    long long getOldestEventID() const;
    long long getNewestEventID() const;

    std::optional<QString> getLatestPath() const;
    /// The latest that was there when it was added.
    std::optional<QString> getLatestPathFound() const;
    /// All but the latest, oldest first.
    QList<Entry> getPriorPaths() const;

    /// Whether the first entry lies in or is a bundle.
    bool isProject() const { return m_isProject; }

    unsigned long long fileID() const { return m_fileID; }

private:
    friend QDebug operator<<(QDebug debug, const ChangedPath& changed);

    const QList<Entry>& sortedEntries() const;

    mutable QList<Entry> m_entries;
    mutable bool m_needsSorting = false;
    bool m_isProject = false;
    unsigned long long m_fileID = 0;
};

QDebug operator<<(QDebug debug, const ChangedPath& changed);

} // namespace Stemhaven
