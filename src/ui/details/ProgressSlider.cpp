#include "ui/details/ProgressSlider.h"

#include "ui/details/AccessibleProgressSlider.h"

#include <QKeyEvent>
#include <QStyleOptionSlider>

#include <utility>

ProgressSlider::ProgressSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    constexpr int largeStep = 10;
    AccessibleProgressSlider::install();
    setRange(0, 100);
    setPageStep(largeStep);
    connect(this, &QSlider::actionTriggered, this, [this] { m_wasMoved = true; });
    connect(this, &QSlider::valueChanged, this, [this] {
        // Assistive technology has no hand to let go with.
        if (!m_mouseIsDown && !m_keyIsDown)
            commit();
    });
}

void ProgressSlider::setStoredValue(int percent, bool isMixed) {
    m_storedValue = percent;
    m_isMixed = isMixed;
    // Not from under the user's hand.
    if (isSliderDown() || m_keyIsDown)
        return;
    const QSignalBlocker blocker(this);
    setValue(percent);
}

void ProgressSlider::give(int percent) {
    m_wasMoved = true;
    setValue(percent);
    commit();
}

void ProgressSlider::commit() {
    if (isSliderDown())
        return;
    const bool wasMoved = std::exchange(m_wasMoved, false);
    if (value() == m_storedValue && !(m_isMixed && wasMoved))
        return;
    m_storedValue = value();
    m_isMixed = false;
    emit edited(m_storedValue);
}

QRect ProgressSlider::handle() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

void ProgressSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QRect place = handle();
    const bool isOnHandle = place.contains(event->position().toPoint());
    m_grip = isOnHandle ? event->position() - QRectF(place).center() : QPointF();
    const int before = value();
    m_mouseIsDown = true;
    QSlider::mousePressEvent(event);
    if (!isOnHandle)
        return;
    // A press moves the handle's middle to the mouse, but on the handle it only takes hold of it.
    setSliderPosition(before);
    m_wasMoved = false;
}

void ProgressSlider::mouseMoveEvent(QMouseEvent* event) {
    QMouseEvent shifted(
        event->type(), event->position() - m_grip, event->scenePosition() - m_grip,
        event->globalPosition() - m_grip, event->button(), event->buttons(), event->modifiers(),
        event->pointingDevice());
    QSlider::mouseMoveEvent(&shifted);
}

void ProgressSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    QSlider::mouseReleaseEvent(event);
    m_mouseIsDown = false;
    commit();
}

void ProgressSlider::keyPressEvent(QKeyEvent* event) {
    const bool wasDown = std::exchange(m_keyIsDown, true);
    QSlider::keyPressEvent(event);
    m_keyIsDown = wasDown || m_wasMoved;
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
