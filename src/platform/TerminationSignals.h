#pragma once

#include <QObject>

#include <memory>

namespace Stemhaven {

/// Turns SIGINT and SIGTERM into a Qt signal on the thread that made it. One at a time in a process.
///
/// Signals that come before the event loop has dealt with an earlier one are taken together. One that comes
/// after the event loop has ended does nothing.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    /// Restores what the two signals did before.
    ~TerminationSignals() override;
    Q_DISABLE_COPY_MOVE(TerminationSignals)

signals:
    void terminationRequested();

private:
    struct PreviousActions;
    std::unique_ptr<PreviousActions> m_previous;
};

} // namespace Stemhaven
