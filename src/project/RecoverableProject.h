#pragma once

#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace Stemhaven {

/// A bundle that cannot be opened as it is, and what is to be done about that. Any thread.
class RecoverableProject {
public:
    /// Called after each step of a repair, with the step's name.
    using StepObserver = std::function<void(const char* step)>;

    explicit RecoverableProject(const QString& bundlePath);

    QString getPath() const { return path; }

    /// A backup is copied over the two files of the alternative.
    bool needsRestore() const { return backupFound && !alternativeComplete; }

    /// The information file is written anew.
    bool needsInformation() const { return !projectInformationReadable; }

    /// Repairs the bundle. What has become whole since the bundle was examined is left as it is. Each file is
    /// complete before it takes the place of the damaged one, which stays beside it, with ".damaged" after
    /// its name, until all is done. An interruption at any point leaves a bundle that is as it was, is whole,
    /// or is found to be recoverable again; a second repair then also removes what the first one left.
    ///
    /// Returns false where nothing failed but the information file could not be put there, as in a folder
    /// that may not be written. Throws IOException or Exception where a step fails; files restored by then
    /// stay.
    bool recover(const StepObserver& afterStep = {}) const;

    QString path;
    /// The folder of the alternative to repair.
    QString alternativeName;
    /// The folder, among that alternative's backups, to restore from.
    QString backupName;
    /// Of all folders of alternatives.
    QList<int> alternativeNumbers;
    /// There is a complete backup that is newer than the alternative's own files, if those are complete.
    bool backupFound = false;
    bool projectInformationReadable = false;
    /// The alternative's own files are all there. No backup, however new, resets it: a healthy alternative
    /// would be overwritten.
    bool alternativeComplete = false;
};

/// Examines a bundle. Nothing where there is nothing to repair, or no folder at the path. Throws IOException
/// where the bundle cannot be looked at.
std::optional<RecoverableProject> isProjectRecoverable(const QString& bundlePath);

} // namespace Stemhaven
