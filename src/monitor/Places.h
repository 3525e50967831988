#pragma once

#include "database/RecordCandidates.h"
#include "project/SystemUniqueFileID.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Stemhaven {

/// Looks at the places where records say that their bundles are. Looks at the disk, so never on the GUI
/// thread.
class Places {
public:
    /// Watched folders, each ending in "/".
    explicit Places(QStringList roots);

    /// Invalid where there is nothing. No answer where a remote file system gives none.
    static std::optional<SystemUniqueFileID> bundleAt(const QString& path);

    /// Whether nobody can tell now if the record's bundle is still at its place, because the watched folder
    /// or the volume that it lay on is missing, or the way there is barred. found is the identity of the
    /// bundle that may be it.
    bool isAway(const ProjectRecord& record, const SystemUniqueFileID& found) const;

    /// Whether found is the record's identity under another number of the device: some systems number their
    /// devices anew with each start. The bundle has kept its inode then, and lies where the volume of its
    /// recorded place is now.
    static bool isRenumbered(const ProjectRecord& record, const SystemUniqueFileID& found);

private:
    static bool
    isMissing(const ProjectRecord& record, const SystemUniqueFileID& found, const QStringList& rootsAbove);

    QStringList m_roots;
};

} // namespace Stemhaven
