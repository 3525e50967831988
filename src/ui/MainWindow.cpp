#include "ui/MainWindow.h"

#include "app/SettingsKeys.h"
#include "app/errors/Exception.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/Backups.h"
#include "ui/CurrentFilter.h"
#include "ui/SelectedBundle.h"
#include "ui/SidePanes.h"
#include "ui/actions/ProjectMenus.h"
#include "ui/actions/WindowActions.h"
#include "ui/details/DetailsPane.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/dialogs/FolderDrop.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/SelectionEditor.h"
#include "ui/preferences/PreferencesDialog.h"
#include "ui/release/Releases.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/sidebar/RemoveFilter.h"
#include "ui/table/ProjectsPane.h"
#include "ui/table/TableColumns.h"
#include "ui/widgets/FramelessWindow.h"
#include "ui/widgets/ToolButton.h"

#include <QAction>
#include <QCloseEvent>
#include <QDebug>
#include <QDir>
#include <QSet>
#include <QSettings>
#include <QStatusTipEvent>
#include <QTableView>

#include <algorithm>
#include <iterator>
#include <utility>

using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;
using Stemhaven::TaskManager;
namespace SettingsKeys = Stemhaven::SettingsKeys;

MainWindow::MainWindow(QWidget* parent)
    : MainWindow(TaskManager::instance(), ProjectMonitor::instance(), parent) {}

MainWindow::MainWindow(TaskManager& tasks, ProjectMonitor& monitor, QWidget* parent)
    : QMainWindow(parent),
      m_tasks(tasks),
      m_monitor(monitor),
      m_builder(Stemhaven::QueryBuilder::defaultProjectsTableBuilder()),
      m_filter(std::make_unique<CurrentFilter>(*m_builder)),
      m_projects(std::make_unique<ProjectsPane>(tasks, *m_builder, *m_filter)),
      m_filters(new FolderTreeItemModel(tasks, this)),
      m_sidebar(new FilterSidebar(*m_filters)),
      m_details(new DetailsPane(tasks)),
      m_actions(new WindowActions(*this)),
      m_history(new EditHistory(tasks, this)),
      m_editor(new SelectionEditor(*m_history, *this)),
      m_menus(new ProjectMenus(*m_actions, *m_editor, *m_filter, *this)),
      m_folders(new FolderAdder(tasks, *this)),
      m_releases(new Releases(tasks, *m_history, monitor, *this)),
      m_backups(new Backups(tasks, monitor, m_history, *this)),
      m_sidebarToggle(new ToolButton(Glyph::SidebarToggle, tr("Filter Sidebar"))),
      m_detailsToggle(new ToolButton(Glyph::DetailsToggle, tr("Project Details"))) {
    setWindowTitle(QStringLiteral("Stemhaven"));
    new FramelessWindow(*this);
    auto* drops = new FolderDrop(*this, *m_folders);
    layOut();
    drops->coverFields();
    setupActions();
    setupEvents();
    setupMenus();
    m_filters->reload();
    reloadProjects();
    restoreState();
    m_projects->focusProjects();
}

MainWindow::~MainWindow() = default;

// --- Reloading ---------------------------------------------------------------------------------------------

void MainWindow::reloadProjects() {
    m_projects->reloadProjects(m_monitor.isSearching());
}

void MainWindow::reloadAll() {
    guarded(tr("Reload all failed."), [this] {
        m_filters->reload();
        reloadProjects();
    });
}

void MainWindow::lookIntoNewFolder() {
    guarded(tr("Restarting project monitor failed."), [this] {
        m_monitor.requestUpdateWatchedDirs();
        m_monitor.restartMonitoring();
        reloadProjects();
    });
}

void MainWindow::rootFolderChanged(const QString& folder) {
    Stemhaven::ErrorHandler::instance().reportError(
        tr("One of the folders that Stemhaven monitors for projects has changed!"),
        Stemhaven::Exception(
            QDir::toNativeSeparators(QDir::cleanPath(folder)) + QStringLiteral("\n\n") +
            tr("Please update the folders in the Monitor tab in Stemhaven's Preferences.")),
        QtWarningMsg);
    guarded(tr("Restarting project monitor failed."), [this] { m_monitor.restartMonitoring(); });
}

void MainWindow::showPreferences() {
    if (!m_preferences) {
        m_preferences = new PreferencesDialog(m_tasks, m_monitor, *m_history, m_builder.get(), this);
        m_preferences->setAttribute(Qt::WA_DeleteOnClose);
        m_preferences->addActions({m_actions->undo, m_actions->redo});
        connect(
            m_preferences, &PreferencesDialog::columnsChanged, m_projects.get(),
            &ProjectsPane::columnsChanged);
        connect(
            &m_projects->columns(), &TableColumns::changed, m_preferences, &PreferencesDialog::showColumns);
    }
    m_preferences->show();
    m_preferences->raise();
    m_preferences->activateWindow();
}

// --- Sidebar -----------------------------------------------------------------------------------------------

void MainWindow::filterTreeViewActivated(FilterType type, qint64 id, const QString& name) {
    guarded(tr("Activating filter failed."), [&] {
        m_filter->set(type, id, name);
        m_sidebar->setCurrent(type, id);
        // A saved search and the last one are terms; with anything else the search ends.
        QString term;
        if (type == FilterType::SAVED_SEARCH)
            term = name;
        else if (type == FilterType::LAST_SEARCH)
            term = m_projects->lastSearchTerm();
        m_markedTerm = term;
        if (term == m_projects->searchTerm())
            m_projects->queryChanged();
        else
            m_projects->setSearchTerm(term);
    });
}

/// Takes the mark from a search that is not the one in the field any more.
void MainWindow::searchTermChanged() {
    const FilterType marked = m_sidebar->shownType();
    const bool isSearch = marked == FilterType::SAVED_SEARCH || marked == FilterType::LAST_SEARCH;
    if (isSearch && m_projects->searchTerm() != m_markedTerm)
        m_sidebar->setCurrent(m_filter->type(), m_filter->id());
}

void MainWindow::clearSearchAndFilter() {
    filterTreeViewActivated(FilterType::ALL, -1, {});
    m_projects->clearSelection();
}

void MainWindow::folderTreeItemModelChanged() {
    guarded(tr("Filter actions refresh failed."), [this] {
        m_menus->setEntries(*m_filters);
        m_details->setEntries(*m_filters);
        followFilter();
    });
}

void MainWindow::addFilter(FilterType type, bool associateWithSelected) {
    const QString name = type == FilterType::SAVED_SEARCH ? m_projects->searchTerm() : QString();
    auto* form = new AddFilterForm(m_tasks, *m_history, type, name, AddFilterForm::EditType::Add, -1, this);
    if (associateWithSelected) {
        connect(
            form, &AddFilterForm::onFilterAdded, this,
            [this, projects = m_editor->selection()](FilterType added, const QString&, qint64 id) {
                guarded(tr("Associating project with filter failed"), [&] {
                    m_editor->associateProjectsWithFilter(added, id, projects);
                });
            });
    }
    form->open();
}

void MainWindow::renameFilter(FilterType type, qint64 id, const QString& name) {
    guarded(tr("Filter could not be renamed."), [&] {
        auto* form =
            new AddFilterForm(m_tasks, *m_history, type, name, AddFilterForm::EditType::Rename, id, this);
        form->open();
    });
}

void MainWindow::removeFilter(FilterType type, qint64 id, const QString& name) {
    guarded(tr("Could not remove filter"), [&] {
        if (id < 0)
            throw Stemhaven::Exception(tr("Cannot remove filter. Could not find primary key..."));
        auto* form = new RemoveFilter(m_tasks, *m_history, type, id, name, this);
        connect(form, &RemoveFilter::removed, this, &MainWindow::filterRemoved);
        form->open();
    });
}

void MainWindow::filterRemoved(FilterType type, qint64 id) {
    if (m_filter->type() == type && m_filter->id() == id)
        filterTreeViewActivated(FilterType::ALL, -1, {});
}

/// What the table is narrowed to, or what is marked in the sidebar, may have another name, or be gone, by an
/// edit or its undoing, or since the program's last end.
void MainWindow::followFilter() {
    const FilterType marked = m_sidebar->shownType();
    // A saved search that is gone gives its number to another one; its term stays in the field.
    if (!m_filters->indexOf(marked, m_sidebar->shownEntryId()).isValid())
        m_sidebar->setCurrent(m_filter->type(), m_filter->id());
    const FilterType type = m_filter->type();
    if (filterTypeTable(type).isEmpty())
        return;
    const QModelIndex entry = m_filters->indexOf(type, m_filter->id());
    const QString name = entry.data().toString();
    if (!entry.isValid()) {
        filterTreeViewActivated(FilterType::ALL, -1, {});
    } else if (name != m_filter->name()) {
        m_filter->set(type, m_filter->id(), name);
        reloadProjects();
    }
}

// --- The selected projects ---------------------------------------------------------------------------------

void MainWindow::projectsTableSelectionChanged() {
    guarded(tr("Could not select project"), [this] {
        const auto selected = m_projects->selectedProjects();
        // A reload may select the same ones anew.
        if (m_whenSelectedIsShown && m_whenSelectedIsShown->projects != selected)
            m_whenSelectedIsShown.reset();
        m_details->selectProjects(selected);
        m_editor->setSelection(editedProjects(), m_details->summary().areAllIgnored());
    });
}

bool MainWindow::selectFirstProject() {
    return m_projects->selectFirst();
}

void MainWindow::projectShown() {
    m_editor->setSelection(editedProjects(), m_details->summary().areAllIgnored());
    m_menus->setSelection(m_details->summary(), m_details->isMissing());
    if (m_whenSelectedIsShown && m_details->project().isValid() && m_details->showsSelection())
        std::exchange(m_whenSelectedIsShown, std::nullopt)->what();
}

/// What waits would come to the user as out of nowhere if it waited on.
void MainWindow::selectedNotAvailable() {
    const auto pending = std::exchange(m_whenSelectedIsShown, std::nullopt);
    if (pending) {
        Stemhaven::ErrorHandler::instance().reportError(
            pending->failureTitle, Stemhaven::Exception(tr("The project's details could not be read.")),
            QtWarningMsg);
    }
}

/// Does something with the project that is selected in the table: at once, or when its details have come. It
/// comes to nothing where another one is selected before.
void MainWindow::whenSelectedIsShown(const QString& failureTitle, const std::function<void()>& what) {
    auto perform = [failureTitle, what] {
        guarded(failureTitle, what);
    };
    if (m_details->showsSelection()) {
        perform();
        return;
    }
    m_whenSelectedIsShown = {m_projects->selectedProjects(), failureTitle, std::move(perform)};
    m_details->retry();
}

/// What an edit applies to: the selected projects. Until the details of newly selected ones have come, it is
/// those of the shown ones that are still selected, or, where none is, all that the user still sees.
QList<qint64> MainWindow::editedProjects() const {
    const QList<qint64>& shown = m_details->projects();
    if (m_details->showsSelection())
        return shown;
    const QList<qint64> selected = m_projects->selectedProjects();
    const QSet<qint64> stillSelected(selected.begin(), selected.end());
    QList<qint64> edited;
    std::copy_if(shown.begin(), shown.end(), std::back_inserter(edited), [&](qint64 project) {
        return stillSelected.contains(project);
    });
    return edited.isEmpty() ? shown : edited;
}

void MainWindow::openSelectedProject() {
    if (m_details->project().isValid())
        SelectedBundle(m_details->project().bundlePath, m_details->isMissing()).open();
}

void MainWindow::showSelectedInFinder() {
    if (m_details->project().isValid())
        SelectedBundle(m_details->project().bundlePath, m_details->isMissing()).showInFinder();
}

void MainWindow::showSelectedPackageContents() {
    if (m_details->project().isValid())
        SelectedBundle(m_details->project().bundlePath, m_details->isMissing()).showPackageContents();
}

void MainWindow::associateProjectWithFilter(FilterType type, qint64 filterID, qint64 projectID) {
    guarded(tr("Associating project with filter failed"), [&] {
        m_editor->associateProjectsWithFilter(type, filterID, {projectID});
    });
}

void MainWindow::disassociateProjectWithFilter(FilterType type, qint64 filterID, qint64 projectID) {
    guarded(tr("Disassociating project with filter failed."), [&] {
        m_editor->disassociateProjectsWithFilter(type, filterID, {projectID});
    });
}

// --- Edits -------------------------------------------------------------------------------------------------

void MainWindow::editsWritten() {
    m_details->reload();
    reloadAll();
}

void MainWindow::editRefused() {
    m_details->reload();
    reloadProjects();
}

void MainWindow::historyChanged() {
    const auto present = [](QAction* action, const QString& verb, const QString& edit) {
        action->setEnabled(!edit.isEmpty());
        action->setText(edit.isEmpty() ? verb : verb + QLatin1Char(' ') + edit);
    };
    m_details->setBeingWritten(m_history->isWriting());
    present(m_actions->undo, tr("&Undo"), m_history->undoText());
    present(m_actions->redo, tr("&Redo"), m_history->redoText());
}

// --- View --------------------------------------------------------------------------------------------------

void MainWindow::hideCompleted(bool hide) {
    guarded(tr("Hiding completed projects failed."), [&] {
        m_builder->hideCompletedTracks(hide);
        QSettings().setValue(SettingsKeys::hideCompleted, hide);
        m_projects->queryChanged();
    });
}

void MainWindow::hideIgnored(bool hide) {
    // The same title for both.
    guarded(tr("Hiding completed projects failed."), [&] {
        m_builder->hideIgnoredTracks(hide);
        QSettings().setValue(SettingsKeys::hideIgnored, hide);
        m_projects->queryChanged();
    });
}

void MainWindow::showHiddenProjects() {
    m_actions->hideCompleted->setChecked(false);
    m_actions->hideIgnored->setChecked(false);
}

void MainWindow::sidePanesChanged() {
    const bool sidebar = m_sidePanes->isSidebarShown();
    m_actions->showSidebar->setEnabled(!sidebar);
    m_actions->hideSidebar->setEnabled(sidebar);
    m_sidebarToggle->setChecked(sidebar);
    const bool details = m_sidePanes->areDetailsShown();
    m_actions->showDetails->setEnabled(!details);
    m_actions->hideDetails->setEnabled(details);
    m_detailsToggle->setChecked(details);
}

bool MainWindow::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::StatusTip:
        m_projects->showTip(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    case QEvent::ShortcutOverride: {
        // Return opens the selected project only where the table has the keyboard; everywhere else it
        // belongs to what has it.
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return && !qobject_cast<QTableView*>(focusWidget()))
            event->accept();
        break;
    }
    default:
        break;
    }
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    m_editor->stopAsking();
    m_details->commit();
    storeState();
    QMainWindow::closeEvent(event);
}
