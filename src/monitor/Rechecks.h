#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <functional>

namespace Stemhaven {

/// The bundles that are to be looked at again because their check came to nothing, or was too early. GUI
/// thread.
///
/// A bundle that could not be read may have been in the middle of being copied: it is checked once more. So
/// is one that changed after its check had read it. Those that the database had no answer for wait together:
/// one of them is tried now and then, and once it is written the others follow, one after the other.
class Rechecks : public QObject {
    Q_OBJECT

public:
    /// False when there is nothing to check any more.
    using Check = std::function<bool(const QString& bundlePath)>;

    /// delay passes before a new check, and twice as long after each further failure of the database.
    Rechecks(std::chrono::milliseconds delay, Check check);

    void bundleUnreadable(const QString& bundlePath);
    /// It may have changed after the check that is running has read it.
    void checkLater(const QString& bundlePath);
    void databaseFailed(const QString& bundlePath);
    void bundleWritten(const QString& bundlePath);
    /// When it comes back, it has its second check anew.
    void bundleVanished(const QString& bundlePath);
    /// A check has come to its end, and not because the database failed.
    void checkEnded();

    /// Whether bundles wait for the database. Another one that was checked now would most likely fail as
    /// well, so it is to wait with them. From any thread.
    bool areWaitingForDatabase() const { return m_areWaiting; }

    void waitForDatabase(const QString& bundlePath);

private:
    void checkDelayed();
    void tryDatabase();
    void checkNextWaiting();

    const Check m_check;
    const std::chrono::milliseconds m_delay;

    QSet<QString> m_delayed;
    QSet<QString> m_checkedOnceMore; // of the unreadable ones
    QTimer m_delayTimer;

    QSet<QString> m_waiting;
    QSet<QString> m_waitingForNextRound; // so that one that always fails does not keep the others waiting
    std::atomic<bool> m_areWaiting = false;
    std::chrono::milliseconds m_databaseDelay;
    QTimer m_databaseTimer;
};

} // namespace Stemhaven
