#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

/// Turns a burst of requests into a few calls: the first request is answered at once, and those within the
/// interval after a call by one more at its end.
class SpacedCall : public QObject {
    Q_OBJECT

public:
    SpacedCall(std::chrono::milliseconds interval, QObject* parent);

    void request();

signals:
    void due();

private:
    void call();

    QTimer m_interval;
    bool m_isWaiting = false;
};
