#pragma once

#include "database/ProjectChanges.h"
#include "database/RecordCandidates.h"
#include "monitor/FoundBundle.h"
#include "monitor/Places.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Stemhaven {

/// Decides for a group of bundles which record each has: an existing one that changed or moved, a new one
/// for a copy or for what was never seen, and gathers the changes of the records.
///
/// What speaks for a record, in this order: the bundle's identity, confirmed by its path, by having been seen
/// moving there, by its note or by its last save; its path, unless its note names the last identity of a
/// record whose bundle is gone; the id in its note; the identity in its note. An
/// identity alone proves nothing, since file systems give freed inode numbers to new bundles. Each decision
/// is known to the next ones of the same group.
class BundleMatching {
public:
    enum class Outcome {
        Decided,
        /// It takes a look at the other bundles first: one of them may be what the record's path or the note
        /// speaks for.
        Undecided,
        /// Likewise. Nothing but its path speaks for the record, to which the notes of others are compared
        /// before it gets this bundle's identity.
        UndecidedByPath,
        /// The bundle could not be read, which has been logged. If a record is surely its own, that one has
        /// been moved along.
        Unreadable
    };

    /// What has been seen of the other bundles by now.
    enum class Knowledge {
        /// Any of them may still turn up at another place.
        Partial,
        /// All that is on the disk and all that was told of it has been looked at.
        AllSeen,
        /// And so long ago that what moved meanwhile has been told of, too.
        Settled
    };

    /// isSearched says whether a path lies in a folder that is searched.
    BundleMatching(Places places, std::function<bool(const QString& path)> isSearched);

    /// priorPaths are where the bundle was seen before it moved. A record goes to a bundle for which only a
    /// path or a note speaks once its own bundle would have turned up elsewhere.
    Outcome match(
        const FoundBundle& bundle, const RecordCandidates& candidates, const QStringList& priorPaths,
        Knowledge knowledge);

    const ProjectChanges& changes() const { return m_changes; }

    /// Paths that records left or gave up; others may be there by now.
    const QStringList& vacatedPaths() const { return m_vacatedPaths; }

    /// A record that had the same identity as the one that was chosen for a bundle.
    struct Duplicate {
        QString name;
        long long chosen = 0;
        long long other = 0;
    };

    const QList<Duplicate>& duplicates() const { return m_duplicates; }

    /// Of bundles that got a record of their own as copies, the ids of the records of their originals.
    const QHash<QString, long long>& originalsBySufid() const { return m_originals; }

private:
    struct Subject {
        const FoundBundle& bundle;
        const RecordCandidates& candidates;
        const QStringList& priorPaths;
        /// The bundle's, unless another catalogue wrote it.
        std::optional<RecordCandidates::Note> note;
        QString path;
        QString sufid;
    };

    struct Origin {
        ProjectRecord record;
        bool isAway = false;
    };

    /// As the decisions so far have left it.
    ProjectRecord current(const ProjectRecord& record) const;
    QList<ProjectRecord> withIdentity(const Subject& subject) const;
    QList<ProjectRecord> atPath(const Subject& subject) const;
    std::optional<ProjectRecord> certainRecord(const Subject& subject) const;
    std::optional<ProjectRecord> movedRecord(const Subject& subject) const;
    std::optional<Origin> originByNote(const Subject& subject) const;
    bool mayHaveCome(const Subject& subject, const ProjectRecord& record) const;
    bool isAway(const Subject& subject, const ProjectRecord& record) const;
    bool isAlsoAt(const Subject& subject, const QString& path) const;

    Outcome update(const Subject& subject, const ProjectRecord& record);
    Outcome insert(const Subject& subject, std::optional<long long> sameUserDataAs = {});
    void takeOver(const Subject& subject, long long projectId, const QString& path);
    static Outcome unreadable(const char* what, const QString& path, const std::exception_ptr& failure);

    Places m_places;
    std::function<bool(const QString& path)> m_isSearched;
    ProjectChanges m_changes;
    QHash<long long, ProjectRecord> m_decided;
    QStringList m_vacatedPaths;
    QList<Duplicate> m_duplicates;
    QHash<QString, long long> m_originals;
};

} // namespace Stemhaven
