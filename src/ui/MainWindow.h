#pragma once

#include <QMainWindow>

#include <memory>

class FolderAdder;
class ProjectsPane;

namespace Stemhaven {
class ProjectMonitor;
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// The program's main window, on the GUI thread.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Over the program's own databases.
    explicit MainWindow(QWidget* parent = nullptr);
    /// Both outlive the window.
    MainWindow(Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QWidget* parent = nullptr);
    ~MainWindow() override;
    Q_DISABLE_COPY(MainWindow)

signals:
    /// Once, when what the first reload brought is shown.
    void firstLoaded();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setupActions();
    void setupEvents();
    void restoreState();
    void storeState();
    void reloadProjects();
    void lookIntoNewFolder();

    Stemhaven::ProjectMonitor& m_monitor;
    std::unique_ptr<Stemhaven::QueryBuilder> m_builder;
    std::unique_ptr<ProjectsPane> m_projects;
    FolderAdder* m_folders;
};
