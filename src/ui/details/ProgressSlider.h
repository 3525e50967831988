#pragma once

#include <QSlider>

/// Sets the progress of projects in percent. edited() comes once a change is made: when the mouse or the key
/// is let go, but not while the slider moves, nor for a click that does not move it. A value that assistive
/// technology sets is such a change, too. The wheel belongs to what the slider stands in, and only the left
/// button moves anything.
class ProgressSlider : public QSlider {
    Q_OBJECT

public:
    explicit ProgressSlider(QWidget* parent = nullptr);

    /// Sets the value as the one that is known, so that nothing of it is reported. Of several projects that
    /// differ it is one's: to move the slider there is then a change for the others.
    void setStoredValue(int percent, bool isMixed = false);
    /// Takes the value as given by the user, also the one that the slider has.
    void give(int percent);
    /// Reports a change that has not been reported yet.
    void commit();

signals:
    void edited(int percent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QRect handle() const;

    int m_storedValue = 0;
    bool m_isMixed = false;
    bool m_wasMoved = false; ///< by the user, if only to where it was before
    QPointF m_grip;          ///< from the handle's middle to where the mouse has taken hold of it
    bool m_mouseIsDown = false;
    bool m_keyIsDown = false; ///< one that has moved the slider
};
