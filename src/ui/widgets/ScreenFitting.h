#pragma once

#include <QObject>
#include <QRect>

class QScreen;
class QWidget;

/// The nearest place for a window of that frame inside of what a screen has available. The window becomes
/// smaller only where it is larger than that.
QRect fittedInto(const QRect& available, const QRect& frame);

/// Makes a window, with the frame that the window manager puts around it, fit the screen that it is on.
/// Leaves a window alone that fills its screen.
void fitToScreen(QWidget& window);

/// Keeps every window of the program inside of its screen: when it is shown, and when a screen shrinks or is
/// unplugged. A window that the user moves across an edge stays there.
class ScreenFitting : public QObject {
    Q_OBJECT

public:
    /// Made after the application object, and lives as long as it.
    explicit ScreenFitting(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitVisibleWindows() const;
    void watch(QScreen* screen);
};
