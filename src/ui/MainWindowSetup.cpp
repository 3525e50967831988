// How the main window is put together: where its parts stand, and who is told of what.

#include "app/errors/Guarded.h"
#include "monitor/ProjectMonitor.h"
#include "ui/Backups.h"
#include "ui/MainWindow.h"
#include "ui/MissingFolders.h"
#include "ui/MissingProjects.h"
#include "ui/SidePanes.h"
#include "ui/SpacedCall.h"
#include "ui/actions/HeaderMenus.h"
#include "ui/actions/PaneKeys.h"
#include "ui/actions/ProjectMenus.h"
#include "ui/actions/WindowActions.h"
#include "ui/details/DetailsPane.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/edits/EditHistory.h"
#include "ui/edits/SelectionEditor.h"
#include "ui/recovery/RecoverDialog.h"
#include "ui/release/Releases.h"
#include "ui/sidebar/FilterSidebar.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProjectsPane.h"
#include "ui/widgets/Splitter.h"
#include "ui/widgets/ToolButton.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QShortcut>

#include <chrono>

using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;

namespace {

/// Of the sidebar's and the details' reloads. The table has its own.
constexpr std::chrono::seconds noticeSpacing{1};

/// As the menu key does, which many keyboards lack.
void askForContextMenu(QWidget& widget) {
    const QPoint position = widget.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, position, widget.mapToGlobal(position));
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

void MainWindow::layOut() {
    m_sidebarToggle->setObjectName(QStringLiteral("sidebarToggleButton"));
    m_detailsToggle->setObjectName(QStringLiteral("projectInfoToggle"));
    for (ToolButton* toggle : {m_sidebarToggle, m_detailsToggle})
        toggle->setCheckable(true);
    m_projects->setTopButtons(m_sidebarToggle, m_detailsToggle);

    // Put together in the order in which the Tab key goes through them.
    auto* sidebarSplitter = new Splitter;
    auto* detailsSplitter = new Splitter;
    sidebarSplitter->setObjectName(QStringLiteral("sidebarSplitter"));
    detailsSplitter->setObjectName(QStringLiteral("projectInfoSplitter"));
    detailsSplitter->addWidget(m_projects.get());
    detailsSplitter->addWidget(m_details);
    sidebarSplitter->addWidget(m_sidebar);
    sidebarSplitter->addWidget(detailsSplitter);
    // What a resized window gains or loses is the table's.
    detailsSplitter->setStretchFactor(0, 1);
    detailsSplitter->setStretchFactor(1, 0);
    sidebarSplitter->setStretchFactor(0, 0);
    sidebarSplitter->setStretchFactor(1, 1);
    detailsSplitter->setCollapsible(0, false);
    sidebarSplitter->setCollapsible(1, false);
    setCentralWidget(sidebarSplitter);
    m_sidePanes = new SidePanes(*sidebarSplitter, *detailsSplitter, this);
}

void MainWindow::setupActions() {
    const auto perform = [this](QAction* action, const QString& failureTitle, auto what) {
        connect(action, &QAction::triggered, this, [failureTitle, what] { guarded(failureTitle, what); });
    };
    const auto performOnSelected = [this](QAction* action, const QString& failureTitle, auto what) {
        connect(action, &QAction::triggered, this, [this, failureTitle, what] {
            whenSelectedIsShown(failureTitle, what);
        });
    };
    performOnSelected(m_actions->open, tr("Open project failed."), [this] { openSelectedProject(); });
    performOnSelected(
        m_actions->showInFinder, tr("Show in finder failed."), [this] { showSelectedInFinder(); });
    performOnSelected(m_actions->showPackageContents, tr("Show package contents failed."), [this] {
        showSelectedPackageContents();
    });
    performOnSelected(m_actions->release, tr("Showing release dialog failed."), [this] {
        m_releases->openDialog(m_details->project().id);
    });
    // The mark comes from the record alone.
    connect(m_actions->ignore, &QAction::triggered, this, [this] { m_actions->ignore->setChecked(false); });
    performOnSelected(
        m_actions->ignore, tr("Could not ignore project"), [this] { m_editor->ignoreSelectedProject(); });
    performOnSelected(m_actions->deleteRecord, tr("Could not delete record"), [this] {
        m_editor->deleteSelectedProjectRecord();
    });
    perform(m_actions->settings, tr("Showing preferences failed."), [this] { showPreferences(); });
    perform(m_actions->recoverProjects, tr("Showing recovery dialog failed."), [this] {
        RecoverDialog::showOver(m_monitor, *this);
    });
    connect(m_actions->quit, &QAction::triggered, this, &QWidget::close);
    perform(m_actions->undo, tr("Undo failed."), [this] { m_history->undo(); });
    perform(m_actions->redo, tr("Redo failed."), [this] { m_history->redo(); });
    perform(m_actions->search, tr("Focusing on search failed."), [this] { m_projects->focusSearch(); });
    perform(m_actions->scrollToTop, tr("Scrolling failed."), [this] { m_projects->scrollToTop(); });
    perform(m_actions->collapseAllFilters, tr("Collapsing filter folders failed."), [this] {
        m_sidebar->collapseAll();
    });
    perform(m_actions->showSidebar, tr("Show filter sidebar failed."), [this] {
        m_sidePanes->showFilterSidebar(true);
    });
    perform(m_actions->hideSidebar, tr("Hiding filter sidebar failed."), [this] {
        m_sidePanes->showFilterSidebar(false);
    });
    perform(m_actions->showDetails, tr("Showing project details failed."), [this] {
        m_sidePanes->showProjectDetails(true);
    });
    perform(m_actions->hideDetails, tr("Hiding project details failed."), [this] {
        m_sidePanes->showProjectDetails(false);
    });
    perform(m_actions->releaseCalendar, tr("Showing the calendar failed."), [this] {
        m_releases->showCalendar({m_actions->undo, m_actions->redo, m_actions->quit});
    });
    perform(m_actions->addFolder, tr("Could not add folder"), [this] { m_folders->choose(); });
    perform(m_actions->backup, tr("Backup failed."), [this] { m_backups->exportBackup(); });
    perform(m_actions->importBackup, tr("Import backup failed."), [this] { m_backups->importBackup(); });
    // Toggled, so that the program may do it as well as the user.
    connect(m_actions->hideCompleted, &QAction::toggled, this, &MainWindow::hideCompleted);
    connect(m_actions->hideIgnored, &QAction::toggled, this, &MainWindow::hideIgnored);
}

void MainWindow::setupEvents() {
    connect(m_projects.get(), &ProjectsPane::firstLoaded, this, &MainWindow::firstLoaded);
    connect(m_projects.get(), &ProjectsPane::addFolderRequested, m_folders, &FolderAdder::choose);
    connect(m_projects.get(), &ProjectsPane::showHiddenRequested, this, &MainWindow::showHiddenProjects);
    connect(m_projects.get(), &ProjectsPane::showAllRequested, this, &MainWindow::clearSearchAndFilter);
    connect(m_projects.get(), &ProjectsPane::reloadRequested, this, &MainWindow::reloadAll);
    connect(m_projects.get(), &ProjectsPane::searchTermChanged, this, &MainWindow::searchTermChanged);
    // The click that asks for them may also be the one that selects the project. What cannot be opened says
    // why, though its action is off.
    connect(m_projects.get(), &ProjectsPane::openRequested, this, [this] {
        whenSelectedIsShown(tr("Open project failed."), [this] {
            if (m_actions->open->isEnabled())
                m_actions->open->trigger();
            else
                openSelectedProject();
        });
    });
    connect(m_projects.get(), &ProjectsPane::contextMenuRequested, this, [this](const QPoint& position) {
        whenSelectedIsShown(tr("Could not select project"), [this, position] { m_menus->popUp(position); });
    });
    connect(
        m_projects.get(), &ProjectsPane::selectionChanged, this, &MainWindow::projectsTableSelectionChanged);
    connect(m_projects.get(), &ProjectsPane::projectPressed, m_details, &DetailsPane::retry);
    connect(m_folders, &FolderAdder::folderAdded, this, &MainWindow::lookIntoNewFolder);

    connect(m_filters, &FolderTreeItemModel::changed, this, &MainWindow::folderTreeItemModelChanged);
    connect(m_sidebar, &FilterSidebar::activated, this, &MainWindow::filterTreeViewActivated);
    connect(m_sidebar, &FilterSidebar::addRequested, this, [this](FilterType type) {
        guarded(tr("Adding filter to selected failed"), [&] { addFilter(type, false); });
    });
    connect(m_sidebar, &FilterSidebar::renameRequested, this, &MainWindow::renameFilter);
    connect(m_sidebar, &FilterSidebar::removeRequested, this, &MainWindow::removeFilter);

    auto* menuKeys = new QShortcut(Qt::SHIFT | Qt::Key_F10, this);
    connect(menuKeys, &QShortcut::activated, this, [this] {
        if (QWidget* widget = focusWidget())
            askForContextMenu(*widget);
    });
    connect(m_menus, &ProjectMenus::newRequested, this, [this](FilterType type) { addFilter(type, true); });

    connect(m_sidePanes, &SidePanes::changed, this, &MainWindow::sidePanesChanged);
    connect(m_sidebarToggle, &QAbstractButton::clicked, this, [this](bool show) {
        guarded(tr("Sidebar toggle failed."), [&] { m_sidePanes->showFilterSidebar(show); });
    });
    connect(m_detailsToggle, &QAbstractButton::clicked, this, [this](bool show) {
        guarded(tr("Project info toggle failed."), [&] { m_sidePanes->showProjectDetails(show); });
    });
    setupEditEvents();
    setupMonitorEvents();
    setupBackups();
}

void MainWindow::setupEditEvents() {
    connect(m_details, &DetailsPane::projectShown, this, &MainWindow::projectShown);
    connect(m_details, &DetailsPane::notAvailable, this, &MainWindow::selectedNotAvailable);
    connect(m_details, &DetailsPane::openRequested, m_actions->open, &QAction::trigger);
    connect(m_details, &DetailsPane::releaseRequested, m_actions->release, &QAction::trigger);
    connect(m_details, &DetailsPane::starRatingEdited, m_editor, &SelectionEditor::setStarRating);
    connect(m_details, &DetailsPane::progressEdited, m_editor, &SelectionEditor::setProgress);
    connect(m_details, &DetailsPane::statusEdited, m_editor, &SelectionEditor::setStatus);
    // Not of the shown ones, which may still be those that were selected before.
    const auto rate = [this](int stars) {
        m_editor->rate(m_projects->selectedProjects(), stars);
    };
    connect(m_menus, &ProjectMenus::ratingRequested, this, rate);
    connect(m_projects.get(), &ProjectsPane::ratingTyped, this, rate);
    connect(m_projects.get(), &ProjectsPane::starClicked, m_editor, &SelectionEditor::toggleRating);
    connect(m_history, &EditHistory::undoOffered, m_projects.get(), &ProjectsPane::offerUndo);
    connect(m_projects.get(), &ProjectsPane::undoRequested, m_actions->undo, &QAction::trigger);
    connect(m_editor, &SelectionEditor::cancelled, m_details, &DetailsPane::reload);
    m_projects->setEditor(*m_details);
    connect(m_editor, &SelectionEditor::editing, m_projects.get(), &ProjectsPane::noteEdit);
    connect(m_history, &EditHistory::wentBackOrForth, m_projects.get(), &ProjectsPane::selectAfterReload);
    connect(m_history, &EditHistory::entryCameBack, m_sidebar, &FilterSidebar::activateAfterReload);
    connect(m_history, &EditHistory::written, this, &MainWindow::editsWritten);
    connect(m_history, &EditHistory::refused, this, &MainWindow::editRefused);
    connect(m_history, &EditHistory::changed, this, &MainWindow::historyChanged);
    historyChanged();
}

void MainWindow::setupMonitorEvents() {
    connect(&m_monitor, &ProjectMonitor::databaseInitialized, this, &MainWindow::reloadAll);
    // While thousands of bundles are being written there is one notice after the other.
    auto* notices = new SpacedCall(noticeSpacing, this);
    connect(notices, &SpacedCall::due, this, [this] {
        m_filters->reload();
        m_details->reload();
    });
    connect(&m_monitor, &ProjectMonitor::projectsDbModified, this, [this, notices] {
        notices->request();
        m_projects->reloadProjectsSpaced(m_monitor.isSearching());
    });
    connect(&m_monitor, &ProjectMonitor::wasStarted, this, [this] {
        m_projects->setWatchedFolders(m_monitor.rootSearchPaths());
        reloadProjects();
    });
    connect(&m_monitor, &ProjectMonitor::watchedFoldersChanged, this, [this] {
        m_projects->setWatchedFolders(m_monitor.rootSearchPaths());
        reloadProjects();
    });
    connect(&m_monitor, &ProjectMonitor::searchProgressed, m_projects.get(), &ProjectsPane::showSearching);
    connect(&m_monitor, &ProjectMonitor::searchEnded, m_projects.get(), &ProjectsPane::endSearching);
    connect(&m_monitor, &ProjectMonitor::rootSearchPathChanged, this, &MainWindow::rootFolderChanged);
    auto* missing = new MissingFolders(m_monitor, this);
    connect(missing, &MissingFolders::changed, m_projects.get(), &ProjectsPane::showMissingFolders);
    auto* missingProjects = new MissingProjects(m_tasks, m_monitor, this);
    connect(missingProjects, &MissingProjects::changed, m_projects.get(), &ProjectsPane::setMissingProjects);
    connect(missingProjects, &MissingProjects::changed, m_details, &DetailsPane::setMissingProjects);
    // A deleted record that comes back may be one of them.
    connect(m_history, &EditHistory::wentBackOrForth, missingProjects, &MissingProjects::request);
}

void MainWindow::setupBackups() {
    connect(m_backups, &Backups::begun, m_projects.get(), &ProjectsPane::showActivity);
    connect(m_backups, &Backups::aboutToImport, this, [this] {
        m_details->commit();
        m_projects->storeAtOnce();
    });
    connect(m_backups, &Backups::imported, this, &MainWindow::restoreAnew);
    connect(m_backups, &Backups::ended, this, [this] {
        m_projects->showActivity({});
        reloadAll();
    });
}

void MainWindow::setupMenus() {
    m_actions->setupMenus(m_menus->associationMenus(), m_menus->valueMenus());
    auto* header = new HeaderMenus(m_projects->table(), m_projects->columns(), *this);
    auto* panes = new PaneKeys(*this, *m_sidePanes, {m_sidebar, m_projects.get(), m_details});
    QAction* before = m_actions->hideCompleted;
    m_actions->viewMenu()->insertMenu(before, header->sortMenu());
    m_actions->viewMenu()->insertMenu(before, header->columnMenu());
    m_actions->viewMenu()->insertActions(before, panes->widthActions());
    m_actions->viewMenu()->insertSeparator(before);
}
