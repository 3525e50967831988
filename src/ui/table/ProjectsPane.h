#pragma once

#include "ui/table/ReloadScheduler.h"

#include <QDeadlineTimer>
#include <QSet>
#include <QStringList>
#include <QWidget>

#include <chrono>

class ColumnWidths;
class CurrentFilter;
class EmptyState;
class HeaderSorting;
class HiddenCount;
class KeyEventTableView;
class ProjectsTableModel;
class StatusLine;
class TableColumns;
class TableSearch;
class QHBoxLayout;
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
    /// All outlive the pane. filter is only asked what it is. Loads nothing before the first reload.
    ProjectsPane(
        Stemhaven::TaskManager& tasks, Stemhaven::QueryBuilder& builder, const CurrentFilter& filter,
        QWidget* parent = nullptr);

    /// At the two ends of the line with the search field.
    void setTopButtons(QWidget* first, QWidget* last);

    /// The projects may have changed. lookingForProjects: the folders are being looked through, which is said
    /// while there are no projects yet.
    void reloadProjects(bool lookingForProjects);
    /// As reloadProjects, where many such calls may come in a row.
    void reloadProjectsSpaced(bool lookingForProjects);
    /// The builder wants other projects.
    void queryChanged();
    /// The builder has other columns, and no sort.
    void columnsChanged();

    KeyEventTableView& table() const { return *m_table; }

    TableColumns& columns() const { return *m_columns; }

    QString searchTerm() const;
    /// The last one that was more than a step on the way to another one.
    QString lastSearchTerm() const;
    void setSearchTerm(const QString& term);

    /// -1 when there is none.
    qint64 currentProject() const;
    /// The current one first.
    QList<qint64> selectedProjects() const;
    /// Selects those of the projects that the next reload brings; where it brings none, what is selected
    /// stays.
    void selectAfterReload(const QList<qint64>& projects);
    /// Where the selected projects are edited; outlives the pane. While the keyboard is there, projects whose
    /// rows an edit takes away stay selected, for the next key must not edit another project.
    void setEditor(const QWidget& editor);
    /// The selected projects are being changed. After a menu's change there is no such key.
    void noteEdit(bool byMenu);
    void clearSelection();
    /// Returns whether there is one.
    bool selectFirst();
    void scrollToTop();
    /// Shows it in the place of the status; an empty one brings the status back.
    void showTip(const QString& tip);
    /// Says for a while what was done, with a link to undo it; an empty text ends that.
    void offerUndo(const QString& done);

    /// The folders are being looked through: says so, and shows now and then what has come of it.
    void showSearching(int projectsFound);
    void endSearching();
    /// All that are watched, there or not.
    void setWatchedFolders(const QStringList& folders);
    /// Says which of the watched folders are not there.
    void showMissingFolders(const QStringList& folders);
    /// By the ids of their records.
    void setMissingProjects(const QSet<qint64>& projects);
    /// Not by a focus proxy, for which the Tab key would leave out the search field.
    void focusProjects();
    void focusSearch();
    /// What goes on with the whole catalogue, to be said below the projects; empty for nothing.
    void showActivity(const QString& activity);
    void storeState();
    /// As storeState(), and nothing else is stored later without the user's doing.
    void storeAtOnce();
    /// Takes all that is in the settings again: columns, widths, sort and search.
    void restoreState();

signals:
    /// Once, when the outcome of the first reload is shown.
    void firstLoaded();
    void addFolderRequested();
    void showHiddenRequested();
    void showAllRequested();
    void searchTermChanged();
    void reloadRequested();
    void selectionChanged();
    /// By the mouse, also one that is selected already.
    void projectPressed();
    /// The current project is to be opened.
    void openRequested();
    void contextMenuRequested(const QPoint& globalPosition);
    /// By the mouse in the project's row.
    void starClicked(qint64 project, int stars);
    /// As by the window's keys, from the table: behind other keys that it has held back.
    void ratingTyped(int stars);
    void undoRequested();

private:
    void layOut();
    void setUpEvents();
    void request(ReloadScheduler::Reason reason);
    void showReloaded(ReloadScheduler::Reason reason);
    void showStatus();
    void showHidden(int projects);
    void showRows();
    void showReason();
    void showUnreadable();
    void showPage(QWidget* page);
    void focusPage(const QWidget& page);
    void goToTable();
    void searchFor(const QString& text);

    const CurrentFilter& m_filter;
    ProjectsTableModel* m_model;
    SearchField* m_searchEdit;
    KeyEventTableView* m_table;
    EmptyState* m_emptyState;
    StatusLine* m_statusLine;
    QWidget* m_tablePage = nullptr;
    QStackedLayout* m_pages = nullptr;
    QHBoxLayout* m_top = nullptr;

    ReloadScheduler* m_reloads;
    HiddenCount* m_hidden;
    TableSearch* m_search;
    TableColumns* m_columns; ///< before what goes by the order of the columns
    HeaderSorting* m_sorting;
    ColumnWidths* m_widths;
    SelectionKeeper* m_selection;
    QDeadlineTimer m_nextFill;          ///< when what a search has found is shown next
    std::chrono::seconds m_fillTime{0}; ///< 0 while there is no search
    QStringList m_watchedFolders;
    int m_hiddenProjects = 0;
    bool m_lookingForProjects = false;
    bool m_isWayToTable = false; ///< the keyboard goes there with the reload that is under way
    bool m_hasLoaded = false;
};
