#pragma once

#include "project/ProjectDetails.h"

#include <QDebug>
#include <QList>
#include <QString>

#include <optional>

class QSqlDatabase;

namespace Stemhaven {

class ProjectData;

/// Changes of the records of some bundles, gathered first and then written in one transaction, so that a
/// group of them costs one and no reader sees two records at one path.
class ProjectChanges {
public:
    struct Written {
        ProjectDetails details;
        long long projectId = 0;
        bool isNew = false;
        /// New, with the user data of another record.
        bool isCopy = false;
        /// The record was gone when it was to be written: the bundle is to be matched again.
        bool isLost = false;
    };

    /// Inserts a record for a bundle. readAt is when the bundle was read, in seconds since the epoch. With
    /// sameUserDataAs, all that the user said of that record is said of the new one too. Throws IOException
    /// where data lacks what a record needs; nothing is added then. So does updateProject().
    void addProject(
        const ProjectDetails& details, const ProjectData& data, qint64 readAt,
        std::optional<long long> sameUserDataAs = {});
    /// Rewrites what the record has from the bundle, never what it has from the user.
    void
    updateProject(const ProjectDetails& details, const ProjectData& data, qint64 readAt, long long projectId);
    /// Rewrites the place and the identity alone, as for a bundle that cannot be read.
    void moveProject(const ProjectDetails& details, long long projectId);

    /// The file system has given the record's identity to another bundle.
    void giveUpIdentity(long long projectId);
    /// Another bundle stands where the record says; where its own is, is not known.
    void giveUpPlace(long long projectId);

    bool isEmpty() const { return m_changes.isEmpty(); }

    /// What became of each added, updated and moved record, in this order. On the worker; throws DbException,
    /// with nothing written.
    QList<Written> write(QSqlDatabase& database) const;

private:
    struct Change {
        QString statement;
        Written written;
        std::optional<long long> sameUserDataAs;
    };

    QStringList m_releases; // of identities and places, before they are given to other records
    QList<Change> m_changes;
};

} // namespace Stemhaven
