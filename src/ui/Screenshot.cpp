#include "ui/Screenshot.h"

#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/MainWindow.h"
#include "ui/details/DetailsPane.h"

#include <QAction>
#include <QApplication>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <utility>

using Stemhaven::ProjectMonitor;

Screenshot::Screenshot(MainWindow& window, QString file, QString action, std::chrono::milliseconds patience)
    : m_window(window),
      m_file(std::move(file)),
      m_action(std::move(action)) {
    connect(&window, &MainWindow::firstLoaded, this, &Screenshot::takeWhenSearched);
    QTimer::singleShot(patience, this, &Screenshot::giveUp);
}

void Screenshot::takeWhenSearched() {
    auto& monitor = ProjectMonitor::instance();
    if (monitor.isSearching())
        connect(&monitor, &ProjectMonitor::projectsDbModified, this, &Screenshot::takeWhenReloaded);
    else
        QMetaObject::invokeMethod(this, &Screenshot::takeWhenFilled, Qt::QueuedConnection);
}

void Screenshot::takeWhenReloaded() {
    // Behind the reload that the window has just asked for.
    auto task = std::make_shared<Stemhaven::SimpleTask>([] {});
    task->setSuccessCallback([self = QPointer(this)](const std::shared_ptr<Stemhaven::Task>&) {
        if (self)
            self->takeWhenFilled();
    });
    Stemhaven::TaskManager::instance().addTask(task);
}

void Screenshot::takeWhenFilled() {
    if (m_window.selectFirstProject())
        connect(
            m_window.findChild<DetailsPane*>(), &DetailsPane::filled, this, &Screenshot::openOther,
            Qt::UniqueConnection);
    else
        openOther();
}

void Screenshot::openOther() {
    auto* action = m_window.findChild<QAction*>(m_action);
    if (m_action.isEmpty() || !action) {
        take();
        return;
    }
    action->trigger();
    // Behind what the other window reads when it opens.
    auto task = std::make_shared<Stemhaven::SimpleTask>([] {});
    task->setSuccessCallback([self = QPointer(this)](const std::shared_ptr<Stemhaven::Task>&) {
        if (self)
            self->take();
    });
    Stemhaven::TaskManager::instance().addTask(task);
}

/// The main window, or the one that stands before it.
QWidget& Screenshot::shownWindow() const {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window != &m_window && window->isVisible() && window->parent() == &m_window &&
            !m_action.isEmpty())
            return *window;
    }
    return m_window;
}

void Screenshot::giveUp() {
    std::fputs("The main window was not filled in time, there is no picture of it.\n", stderr);
    QCoreApplication::exit(1);
}

void Screenshot::take() {
    const bool written = shownWindow().grab().save(m_file);
    if (!written)
        std::fprintf(stderr, "Could not write the picture to %s\n", qUtf8Printable(m_file));
    QCoreApplication::exit(written ? 0 : 1);
}
