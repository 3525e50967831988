#include "ui/widgets/FramelessWindow.h"

#include "platform/WindowFrame.h"

#include <QEvent>
#include <QWidget>

FramelessWindow::FramelessWindow(QWidget& window) : QObject(&window), m_window(window) {
    window.installEventFilter(this);
}

bool FramelessWindow::eventFilter(QObject* watched, QEvent* event) {
    // The native window may be made anew, and then begins with a frame of its own.
    if (watched == &m_window && event->type() == QEvent::Show) {
        const int covered = Stemhaven::extendContentsIntoTitleBar(m_window.winId());
        m_window.setContentsMargins(0, covered, 0, 0);
    }
    return QObject::eventFilter(watched, event);
}
