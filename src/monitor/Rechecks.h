#pragma once

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>

namespace Stemhaven {

/// The bundles that are to be looked at again because their check came to nothing. GUI thread.
///
/// A bundle that could not be read may have been in the middle of being copied: it is checked once more. One
/// that the database had no answer for is checked until it has.
class Rechecks : public QObject {
    Q_OBJECT

public:
    /// delay passes before a new check, and twice as long after each further failure of the database.
    Rechecks(std::chrono::milliseconds delay, std::function<void(const QString& bundlePath)> check);

    void bundleUnreadable(const QString& bundlePath);
    void databaseFailed(const QString& bundlePath);
    void bundleWritten(const QString& bundlePath);

private:
    void checkWaiting();

    std::function<void(const QString&)> m_check;
    QSet<QString> m_waiting;
    QSet<QString> m_checkedOnceMore;
    const std::chrono::milliseconds m_delay;
    int m_failuresInARow = 0;
    QTimer m_timer;
};

} // namespace Stemhaven
