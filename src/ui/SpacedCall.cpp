#include "ui/SpacedCall.h"

#include <utility>

SpacedCall::SpacedCall(std::chrono::milliseconds interval, QObject* parent) : QObject(parent) {
    m_interval.setSingleShot(true);
    m_interval.setInterval(interval);
    connect(&m_interval, &QTimer::timeout, this, [this] {
        if (std::exchange(m_isWaiting, false))
            call();
    });
}

void SpacedCall::request() {
    if (m_interval.isActive())
        m_isWaiting = true;
    else
        call();
}

void SpacedCall::call() {
    m_interval.start();
    emit due();
}
