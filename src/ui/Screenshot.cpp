#include "ui/Screenshot.h"

#include "database/SimpleTask.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/MainWindow.h"
#include "ui/details/DetailsPane.h"

#include <QApplication>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <utility>

using Stemhaven::ProjectMonitor;

Screenshot::Screenshot(MainWindow& window, QString file, std::chrono::milliseconds patience)
    : m_window(window),
      m_file(std::move(file)) {
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
            m_window.findChild<DetailsPane*>(), &DetailsPane::filled, this, &Screenshot::take,
            Qt::UniqueConnection);
    else
        take();
}

void Screenshot::giveUp() {
    std::fputs("The main window was not filled in time, there is no picture of it.\n", stderr);
    QCoreApplication::exit(1);
}

void Screenshot::take() {
    const bool written = m_window.grab().save(m_file);
    if (!written)
        std::fprintf(stderr, "Could not write the picture to %s\n", qUtf8Printable(m_file));
    QCoreApplication::exit(written ? 0 : 1);
}
