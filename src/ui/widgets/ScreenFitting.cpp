#include "ui/widgets/ScreenFitting.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

/// Room for a frame that the window manager has not made yet: as high as the highest usual title bars.
constexpr QMargins expectedFrame{1, 40, 1, 1};

QMargins frameOf(const QWidget& window) {
    if (window.windowFlags().testFlag(Qt::FramelessWindowHint))
        return {};
    const QWindow* native = window.windowHandle();
    const QMargins frame = native && window.isVisible() ? native->frameMargins() : QMargins();
    return frame.isNull() ? expectedFrame : frame;
}

/// Menus, tool tips and the like are placed by whoever opens them.
bool isFitted(const QWidget& widget) {
    const Qt::WindowType type = widget.windowType();
    return widget.isWindow() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet);
}

} // namespace

QRect fittedInto(const QRect& available, const QRect& frame) {
    QRect fitted(frame.topLeft(), frame.size().boundedTo(available.size()));
    fitted.moveLeft(std::clamp(fitted.left(), available.left(), available.right() + 1 - fitted.width()));
    fitted.moveTop(std::clamp(fitted.top(), available.top(), available.bottom() + 1 - fitted.height()));
    return fitted;
}

void fitToScreen(QWidget& window) {
    const QScreen* screen = window.screen();
    if (!screen || window.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized))
        return;
    const QMargins frame = frameOf(window);
    const QRect place = window.geometry();
    const QRect fitted = fittedInto(screen->availableGeometry(), place.marginsAdded(frame));
    const QRect contents = fitted.marginsRemoved(frame);
    if (contents.size() != place.size())
        window.resize(contents.size());
    // Where nobody has placed it yet, the window manager does.
    const bool isPlaced = window.isVisible() || window.testAttribute(Qt::WA_Moved);
    if (isPlaced && contents.topLeft() != place.topLeft())
        window.move(fitted.topLeft());
}

ScreenFitting::ScreenFitting(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
    const auto screens = QGuiApplication::screens();
    for (QScreen* screen : screens)
        watch(screen);
    connect(qApp, &QGuiApplication::screenAdded, this, &ScreenFitting::watch);
    // Queued: Qt moves the windows of a screen that is gone to another one first.
    connect(
        qApp, &QGuiApplication::screenRemoved, this, [this] { fitVisibleWindows(); }, Qt::QueuedConnection);
}

bool ScreenFitting::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && !event->spontaneous() && watched->isWidgetType()) {
        auto* widget = static_cast<QWidget*>(watched);
        if (isFitted(*widget)) {
            fitToScreen(*widget);
            // Once more when it has its place and its frame.
            QMetaObject::invokeMethod(
                widget,
                [widget] {
                    if (widget->isVisible())
                        fitToScreen(*widget);
                },
                Qt::QueuedConnection);
        }
    }
    return QObject::eventFilter(watched, event);
}

void ScreenFitting::watch(QScreen* screen) {
    connect(
        screen, &QScreen::availableGeometryChanged, this, [this] { fitVisibleWindows(); },
        Qt::QueuedConnection);
}

void ScreenFitting::fitVisibleWindows() const {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && isFitted(*window))
            fitToScreen(*window);
    }
}
