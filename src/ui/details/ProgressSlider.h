#pragma once

#include <QSlider>

/// Sets a project's progress in percent. sliderReleased() comes once a change is made, by whatever means:
/// when the mouse or the key is let go, but not while the slider moves. The wheel belongs to what the slider
/// stands in.
class ProgressSlider : public QSlider {
    Q_OBJECT

public:
    explicit ProgressSlider(QWidget* parent = nullptr);

    /// Sets the value as the one that is known, so that nothing of it is reported.
    void setStoredValue(int percent);
    /// Reports a change that has not been reported yet.
    void commit();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    int m_storedValue = 0;
    bool m_keyIsDown = false; ///< one that has moved the slider
};
