#pragma once

#include <QObject>

class QWidget;

/// Gives a window one ground from edge to edge: where the system can, its contents reach into the title bar,
/// with room left for the title bar's buttons. Elsewhere the window manager's frame stays, and this does
/// nothing. Belongs to the window.
class FramelessWindow : public QObject {
    Q_OBJECT

public:
    explicit FramelessWindow(QWidget& window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
};
