#pragma once

#include "database/FilterType.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class Backups;
class CurrentFilter;
class DetailsPane;
class EditHistory;
class FilterSidebar;
class FolderAdder;
class FolderTreeItemModel;
class PreferencesDialog;
class ProjectMenus;
class ProjectsPane;
class Releases;
class SelectionEditor;
class SidePanes;
class ToolButton;
class WindowActions;

namespace Stemhaven {
class ProjectMonitor;
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// The program's main window, on the GUI thread: the sidebar, the projects and the details of the selected
/// one. It tells its parts of each other.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Over the program's own databases.
    explicit MainWindow(QWidget* parent = nullptr);
    /// Both outlive the window.
    MainWindow(Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QWidget* parent = nullptr);
    ~MainWindow() override;
    Q_DISABLE_COPY(MainWindow)

    void associateProjectWithFilter(FilterType type, qint64 filterID, qint64 projectID);
    void disassociateProjectWithFilter(FilterType type, qint64 filterID, qint64 projectID);

    /// Returns whether there is one.
    bool selectFirstProject();

signals:
    /// Once, when what the first reload brought is shown.
    void firstLoaded();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void layOut();
    void setupActions();
    void setupEvents();
    void setupEditEvents();
    void setupMonitorEvents();
    void setupBackups();
    void setupMenus();
    void restoreState();
    void storeState();
    void restoreAnew();
    void restoreShown();
    void storeShown() const;

    void reloadProjects();
    void reloadAll();
    void lookIntoNewFolder();
    void rootFolderChanged(const QString& folder);
    void showPreferences();

    void filterTreeViewActivated(FilterType type, qint64 id, const QString& name);
    void clearSearchAndFilter();
    void searchTermChanged();
    void folderTreeItemModelChanged();
    /// Leaves failures to the caller, who knows what was asked for.
    void addFilter(FilterType type, bool associateWithSelected);
    void renameFilter(FilterType type, qint64 id, const QString& name);
    void removeFilter(FilterType type, qint64 id, const QString& name);
    void filterRemoved(FilterType type, qint64 id);
    void followFilter();

    void projectsTableSelectionChanged();
    void projectShown();
    void selectedNotAvailable();
    void whenSelectedIsShown(const QString& failureTitle, const std::function<void()>& what);
    QList<qint64> editedProjects() const;
    void openSelectedProject();
    void showSelectedInFinder();
    void showSelectedPackageContents();

    void hideCompleted(bool hide);
    void hideIgnored(bool hide);
    void showHiddenProjects();
    void sidePanesChanged();
    void editsWritten();
    void editRefused();
    void historyChanged();

    Stemhaven::TaskManager& m_tasks;
    Stemhaven::ProjectMonitor& m_monitor;
    std::unique_ptr<Stemhaven::QueryBuilder> m_builder;
    std::unique_ptr<CurrentFilter> m_filter;
    std::unique_ptr<ProjectsPane> m_projects;
    FolderTreeItemModel* m_filters;
    FilterSidebar* m_sidebar;
    DetailsPane* m_details;
    WindowActions* m_actions;
    EditHistory* m_history;
    SelectionEditor* m_editor;
    ProjectMenus* m_menus;
    FolderAdder* m_folders;
    Releases* m_releases;
    Backups* m_backups;
    QPointer<PreferencesDialog> m_preferences;
    ToolButton* m_sidebarToggle;
    ToolButton* m_detailsToggle;
    SidePanes* m_sidePanes = nullptr;
    QString m_markedTerm; ///< of the search that is marked in the sidebar

    /// What was asked for before the details of the selected projects had come.
    struct PendingRequest {
        QList<qint64> projects;
        QString failureTitle;
        std::function<void()> what;
    };

    std::optional<PendingRequest> m_whenSelectedIsShown;
};
