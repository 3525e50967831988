#include "ui/details/ProgressSlider.h"

#include <QKeyEvent>

ProgressSlider::ProgressSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    constexpr int largeStep = 10;
    setRange(0, 100);
    setPageStep(largeStep);
    connect(this, &QSlider::sliderReleased, this, [this] { m_storedValue = value(); });
}

void ProgressSlider::setStoredValue(int percent) {
    m_storedValue = percent;
    // Not from under the user's hand.
    if (isSliderDown() || m_keyIsDown)
        return;
    const QSignalBlocker blocker(this);
    setValue(percent);
}

void ProgressSlider::commit() {
    if (value() != m_storedValue && !isSliderDown())
        emit sliderReleased();
}

void ProgressSlider::mouseReleaseEvent(QMouseEvent* event) {
    QSlider::mouseReleaseEvent(event);
    commit();
}

void ProgressSlider::keyPressEvent(QKeyEvent* event) {
    const int before = value();
    QSlider::keyPressEvent(event);
    m_keyIsDown = m_keyIsDown || value() != before;
}

void ProgressSlider::keyReleaseEvent(QKeyEvent* event) {
    QSlider::keyReleaseEvent(event);
    if (event->isAutoRepeat())
        return;
    m_keyIsDown = false;
    commit();
}

void ProgressSlider::focusOutEvent(QFocusEvent* event) {
    QSlider::focusOutEvent(event);
    m_keyIsDown = false;
    commit();
}

void ProgressSlider::wheelEvent(QWheelEvent* event) {
    event->ignore();
}
