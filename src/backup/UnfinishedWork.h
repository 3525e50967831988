#pragma once

#include <QString>
#include <QStringList>

namespace Stemhaven {

/// Remembers, in a file of the profile, what an export or import is about to make outside of it, so that the
/// next start removes what a killed program left: an archive that was never read back must not pass for a
/// backup.
class UnfinishedWork {
public:
    /// names are those of the files that a folder may have; nothing else in it is ever removed.
    UnfinishedWork(const QString& profileFolder, const QStringList& names);

    /// Nothing may be at these paths yet. Empty ones are allowed. False where it cannot be remembered.
    bool remember(const QString& folder, const QString& archive) const;

    /// The archive is finished and stays.
    bool keepArchive(const QString& folder) const { return remember(folder, {}); }

    /// Removes what is remembered, and forgets it. False where something of it is still there.
    bool remove() const;

    /// For a folder that is removed already.
    void forget() const;

private:
    bool removeFolder(const QString& folder) const;

    QString m_marker;
    QStringList m_names;
};

} // namespace Stemhaven
