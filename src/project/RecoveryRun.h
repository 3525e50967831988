#pragma once

#include "project/RecoverySearch.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace Stemhaven {

/// What became of the repair of one bundle.
struct RecoveryOutcome {
    bool isRecovered = false;
    /// The reason where it is not.
    QString failure;
};

/// Repairs a bundle, for lists in which one failure must not stop the rest: logs what is thrown.
RecoveryOutcome tryToRecover(const RecoverableProject& project);

/// The search and the repair of everything found, without a window: for a terminal, scripts and timers. All
/// functions are called on the thread that runs it.
class RecoveryRun {
public:
    struct Report {
        /// A line a step, in English and without line ends; paths are quoted as in the log.
        QStringList lines;
        int looked = 0;
        int unreadable = 0;
        int found = 0;
        int recovered = 0;
        int failed = 0;
        /// The question was answered with no, or the run was stopped.
        bool isEndedEarly = false;

        /// Whether the program may end with the exit status 0.
        bool isWell() const { return unreadable == 0 && failed == 0 && !isEndedEarly; }
    };

    /// Nothing is repaired and nothing asked.
    bool isDryRun = false;
    /// The question is answered with yes already.
    bool isConfirmed = false;
    /// Asked once before the first repair, where isConfirmed is not set. No function stands for a no.
    std::function<bool(const QString& question)> confirm;
    /// Gets each line of the report as it comes. May be empty.
    std::function<void(const QString& line)> printed;
    /// The count for a terminal while the search goes on. May be empty.
    std::function<void(RecoverySearch::Progress progress)> progressed;
    /// Ends the search, and the repair between two bundles, when the answer is true. May be empty.
    std::function<bool()> isStopped;

    Report run(const QStringList& folders) const;
};

} // namespace Stemhaven
