#pragma once

#include "app/errors/IOException.h"

#include <QString>

#include <functional>

namespace Stemhaven {

/// What an export or import is about to do.
struct BackupProgress {
    /// One line for the user.
    QString text;
    /// Counted from 1.
    int step = 0;
    int steps = 0;
    /// Whether an end that is asked for is still heard.
    bool canBeCancelled = true;
};

/// Called before each step, on the thread that does the work. False asks for an end, which is heard until
/// live files are about to be replaced. An empty one is allowed.
using BackupObserver = std::function<bool(const BackupProgress&)>;

/// How an export or import ended.
struct BackupResult {
    enum class Outcome { Finished, Cancelled, Failed };

    Outcome outcome = Outcome::Failed;
    /// The status line: what was finished, or why it failed.
    QString message;
    /// For a failure that is shown in a window of its own: its headline, and what the user can do; both may
    /// be empty.
    QString title;
    QString advice;
    /// What an export has written.
    QString archive;
    /// The imported database is of an older version: initDatabase() is to run before it is used.
    bool needsInitialisation = false;

    bool isFinished() const { return outcome == Outcome::Finished; }
};

/// Ends an export or import with a text for the user.
class BackupError : public IOException {
public:
    explicit BackupError(const QString& text, const QString& headline = {}, const QString& advice = {})
        : IOException(text),
          m_headline(headline),
          m_advice(advice) {}

    QString headline() const { return m_headline; }

    QString advice() const { return m_advice; }

    BackupError* clone() const override { return new BackupError(*this); }

    void raise() const override { throw *this; }

private:
    QString m_headline;
    QString m_advice;
};

/// Ends an export or import because its observer wishes so.
struct BackupCancelled {};

/// Counts the steps of one export or import and tells the observer.
class BackupSteps {
public:
    BackupSteps(int count, BackupObserver observer);

    /// Throws BackupCancelled where the observer asks for an end.
    void next(const QString& text);
    /// The observer is told, and not asked.
    void nextWithoutWayBack(const QString& text);

private:
    bool tell(const QString& text, bool canBeCancelled);

    int m_count;
    int m_step = 0;
    BackupObserver m_observer;
};

/// Runs the body of an export or import, and makes a result of what it throws. title is the headline of a
/// failure that has none, and, before the failure's own text, what the user is told of one that was not
/// foreseen.
BackupResult backupResult(
    const QString& title, const std::function<BackupResult()>& body,
    const std::function<void(BackupResult&)>& onFailure);

} // namespace Stemhaven
