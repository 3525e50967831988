#pragma once

#include "BenchProcess.h"
#include "EventLoopWatch.h"
#include "app/Shutdown.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/MainWindow.h"
#include "ui/table/ProjectsTableModel.h"
#include "ui/widgets/Theme.h"

#include <QEventLoop>
#include <QTableView>

#include <functional>
#include <memory>

/// The program with its window, in the process that measures it. On the profile that the environment names.
class ProgramInProcess {
public:
    ProgramInProcess(int& argc, char** argv) {
        nameProgram();
        m_application = std::make_unique<EventLoopWatch>(argc, argv);
        m_theme = std::make_unique<Theme>();
        Stemhaven::ProjectMonitor::instance();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
    }

    ~ProgramInProcess() {
        Stemhaven::ProjectMonitor::stop();
        m_window.reset();
        Stemhaven::Shutdown::begin();
        Stemhaven::TaskManager::instance().shutDown();
    }

    ProgramInProcess(const ProgramInProcess&) = delete;
    ProgramInProcess& operator=(const ProgramInProcess&) = delete;

    EventLoopWatch& application() { return *m_application; }

    MainWindow& window() { return *m_window; }

    ProjectsTableModel& model() { return *m_window->findChild<ProjectsTableModel*>(); }

    QTableView& table() { return *m_window->findChild<QTableView*>(QStringLiteral("projectsTableView")); }

    /// Runs the event loop until the answer to an event that has been delivered is true. Ends the process
    /// where that takes too long.
    void runUntil(const std::function<bool(const QObject*, QEvent::Type)>& isEnd) {
        QEventLoop loop;
        failLater(&loop);
        m_application->setDelivered([&](const QObject* receiver, QEvent::Type type) {
            if (isEnd(receiver, type))
                loop.quit();
        });
        loop.exec();
        m_application->setDelivered({});
    }

private:
    std::unique_ptr<EventLoopWatch> m_application;
    std::unique_ptr<Theme> m_theme;
    std::unique_ptr<MainWindow> m_window;
};
