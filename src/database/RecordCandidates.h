#pragma once

#include "project/ProjectDetails.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

class QSqlDatabase;

namespace Stemhaven {

/// What a record says of its bundle's place and identity.
struct ProjectRecord {
    QString path() const { return filepath + filename; }

    long long id = 0;
    QString filepath;
    QString filename;
    /// Empty where the record has given its identity up.
    QString sufid;
    /// When the bundle's information file was last changed, in seconds since the epoch.
    qint64 lastModified = 0;
};

/// The records that a bundle may be, by what speaks for each. A record can be in several of the lists.
struct RecordCandidates {
    /// What the note in a bundle says: the id of a record, and the identity that the bundle had then.
    using Note = std::pair<std::int64_t, std::string>;

    QList<ProjectRecord> byIdentity;
    QList<ProjectRecord> byPath;
    /// At the paths from which the bundle was seen to move.
    QList<ProjectRecord> byPriorPath;
    std::optional<ProjectRecord> byNotedId;
    /// All identities that the record with the noted id has had before.
    QStringList formerOfNotedId;
    /// Looked up where no record has the id that the note names.
    QList<ProjectRecord> byNotedIdentity;
};

// On the worker; all throw DbException.

std::optional<ProjectRecord> selectRecord(QSqlDatabase& database, long long projectId);
/// Those whose bundle is at path.
QList<ProjectRecord> selectAt(QSqlDatabase& database, const QString& path);

RecordCandidates selectCandidates(
    QSqlDatabase& database, const ProjectDetails& details, const std::optional<RecordCandidates::Note>& note,
    const QStringList& priorPaths);

} // namespace Stemhaven
