#pragma once

#include "ui/table/ReloadScheduler.h"

#include <QWidget>

class CatalogueCheck;
class ColumnWidths;
class ElidedLabel;
class EmptyState;
class HeaderSorting;
class KeyEventTableView;
class ProjectsTableModel;
class TableSearch;
class QStackedLayout;
class SearchField;
class SelectionKeeper;

namespace Stemhaven {
class QueryBuilder;
class TaskManager;
} // namespace Stemhaven

/// The search field, the projects below it and the line that says what is shown.
class ProjectsPane : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the pane. Loads nothing before the first reload.
    ProjectsPane(Stemhaven::TaskManager& tasks, Stemhaven::QueryBuilder& builder, QWidget* parent = nullptr);

    /// lookingForProjects: the folders are being looked through, which is said while there are no projects
    /// yet.
    void reloadProjects(bool lookingForProjects);

    /// Says in the status line that the folders are being looked through, and how many projects that came
    /// across.
    void showSearching(int projectsFound);
    void endSearching();
    void focusSearch();
    void storeState();

signals:
    /// Once, when the outcome of the first reload is shown.
    void firstLoaded();
    void addFolderRequested();

private:
    void layOut();
    void setUpEvents();
    void request(ReloadScheduler::Reason reason);
    void showReloaded(ReloadScheduler::Reason reason);
    void showStatus();
    void showRowsOrReason();
    void showCatalogue(bool isEmpty);
    void showPage(QWidget* page);
    void showHidden();
    void goToTable();
    void searchFor(const QString& text);

    Stemhaven::QueryBuilder& m_builder;
    ProjectsTableModel* m_model;
    SearchField* m_searchEdit;
    KeyEventTableView* m_table;
    EmptyState* m_emptyState;
    ElidedLabel* m_statusLabel;
    ElidedLabel* m_searchingLabel;
    QWidget* m_tablePage = nullptr;
    QStackedLayout* m_pages = nullptr;

    ReloadScheduler* m_reloads;
    CatalogueCheck* m_catalogue;
    TableSearch* m_search;
    HeaderSorting* m_sorting;
    ColumnWidths* m_columns;
    SelectionKeeper* m_selection;
    bool m_lookingForProjects = false;
    bool m_hasLoaded = false;
};
