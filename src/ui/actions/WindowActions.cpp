#include "ui/actions/WindowActions.h"

#include "platform/FileManager.h"
#include "ui/NotFound.h"
#include "ui/widgets/Icons.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace {

/// Platforms have one of two, and who knows the other tries it.
QList<QKeySequence> redoShortcuts() {
    QList<QKeySequence> shortcuts{QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)};
    const auto others = QKeySequence::keyBindings(QKeySequence::Redo) << QKeySequence(Qt::CTRL | Qt::Key_Y);
    for (const QKeySequence& other : others) {
        if (!shortcuts.contains(other))
            shortcuts.append(other);
    }
    return shortcuts;
}

/// Not every desktop has keys for them.
QList<QKeySequence> settingsShortcuts() {
    const auto shortcuts = QKeySequence::keyBindings(QKeySequence::Preferences);
    return shortcuts.isEmpty() ? QList{QKeySequence(Qt::CTRL | Qt::Key_Comma)} : shortcuts;
}

} // namespace

WindowActions::WindowActions(QMainWindow& window) : QObject(&window), m_window(window) {
    settings = make(tr("S&ettings"), settingsShortcuts());
    settings->setMenuRole(QAction::PreferencesRole);

    auto openShortcuts = QKeySequence::keyBindings(QKeySequence::Open);
    openShortcuts.append(Qt::Key_Return);
    open = make(tr("&Open"), openShortcuts);
    // A key that is held would start a program at every repetition.
    open->setAutoRepeat(false);
    const bool hasFinder = Stemhaven::hasFinder();
    showInFinder = make(
        hasFinder ? tr("&Show in Finder") : tr("&Show in File Manager"),
        QKeySequence::keyBindings(QKeySequence::Save));
    showInFinder->setAutoRepeat(false);
    showPackageContents = make(tr("Show &Package Contents"), QKeySequence::keyBindings(QKeySequence::Print));
    showPackageContents->setAutoRepeat(false);
    release = make(tr("&Release"), {QKeySequence(Qt::CTRL | Qt::Key_R)});
    release->setObjectName(QStringLiteral("release"));
    ignore = make(tr("&Ignore"));
    ignore->setCheckable(true);
    deleteRecord = make(tr("&Delete record"));

    quit = make(tr("&Quit"), QKeySequence::keyBindings(QKeySequence::Quit));
    quit->setMenuRole(QAction::QuitRole);

    undo = make(tr("&Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)});
    redo = make(tr("&Redo"), redoShortcuts());

    scrollToTop = make(tr("Scroll to &Top"), {QKeySequence(Qt::CTRL | Qt::Key_T)});
    collapseAllFilters = make(tr("Co&llapse All Filters"));
    collapseAllFilters->setStatusTip(tr("Collapse All Filters"));
    // Of each pair only the one that is possible is enabled, and so they share a shortcut.
    const QList<QKeySequence> sidebarShortcut{QKeySequence(Qt::CTRL | Qt::Key_BracketLeft)};
    const QList<QKeySequence> detailsShortcut{QKeySequence(Qt::CTRL | Qt::Key_D)};
    showSidebar = make(tr("Show &Filter Sidebar"), sidebarShortcut);
    showSidebar->setEnabled(false);
    hideSidebar = make(tr("&Hide Filter Sidebar"), sidebarShortcut);
    showDetails = make(tr("Show &Project Details"), detailsShortcut);
    showDetails->setEnabled(false);
    hideDetails = make(tr("Hide Project &Details"), detailsShortcut);
    hideCompleted = make(tr("Hide &Completed Projects"), {QKeySequence(Qt::CTRL | Qt::Key_C)});
    hideIgnored = make(tr("Hide &Ignored Projects"));
    for (QAction* hide : {hideCompleted, hideIgnored}) {
        hide->setCheckable(true);
        hide->setChecked(true);
    }
    releaseCalendar = make(tr("&Release Calendar"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R)});
    releaseCalendar->setObjectName(QStringLiteral("releaseCalendar"));
    search = make(tr("&Search"), {QKeySequence(Qt::CTRL | Qt::Key_F)});
    checkForUpdates = make(tr("Check for Updates..."));
    checkForUpdates->setMenuRole(QAction::ApplicationSpecificRole);

    addFolder = make(tr("&Add Folder..."));
    addFolder->setStatusTip(tr("Look for projects in another folder, too"));
    recoverProjects = make(tr("Recover Projects..."));
    recoverProjects->setObjectName(QStringLiteral("recoverProjects"));
    backup = make(tr("Backup..."));
    backup->setStatusTip(tr("Write everything that Stemhaven knows into one file"));
    importBackup = make(tr("Import backup..."));
    importBackup->setStatusTip(tr("Replace everything that Stemhaven knows by what a backup holds"));

    // What it opens does not exist yet.
    checkForUpdates->setEnabled(false);
    enableForSelection(false, false);
    release->setEnabled(false);
}

void WindowActions::enableForSelection(bool isSelected, bool isMissing) {
    for (QAction* action : ofSelectedProject())
        action->setEnabled(isSelected);
    for (QAction* action : {open, showInFinder, showPackageContents})
        action->setEnabled(isSelected && !isMissing);
    describeBundleActions(isMissing);
}

void WindowActions::describeBundleActions(bool isMissing) {
    const auto describe = [isMissing](QAction* action, const QString& tip) {
        action->setStatusTip(isMissing ? NotFound::reason() : tip);
    };
    describe(open, tr("Open project in Logic Pro"));
    describe(showInFinder, Stemhaven::hasFinder() ? tr("Show in Finder") : tr("Show in File Manager"));
    describe(showPackageContents, tr("Open Project Package Contents"));
}

QAction* WindowActions::make(const QString& text, const QList<QKeySequence>& shortcuts) {
    auto* action = new QAction(text, &m_window);
    action->setShortcuts(shortcuts);
    // Also where no menu shows them.
    m_window.addAction(action);
    return action;
}

void WindowActions::setupMenus(const QList<QMenu*>& associationMenus, const QList<QMenu*>& valueMenus) {
    auto* file = m_window.menuBar()->addMenu(tr("&File"));
    file->addActions({open, showInFinder, showPackageContents});
    file->addSeparator();
    for (QMenu* menu : associationMenus)
        file->addMenu(menu);
    file->addSeparator();
    file->addActions({release, ignore, deleteRecord});
    file->addSeparator();
    file->addAction(settings);
    file->addSeparator();
    file->addAction(quit);

    auto* edit = m_window.menuBar()->addMenu(tr("&Edit"));
    edit->addActions({undo, redo});
    edit->addSeparator();
    for (QMenu* menu : valueMenus)
        edit->addMenu(menu);

    auto* view = m_window.menuBar()->addMenu(tr("&View"));
    view->addActions({search, scrollToTop});
    view->addSeparator();
    view->addActions({showSidebar, hideSidebar, collapseAllFilters, showDetails, hideDetails});
    view->addSeparator();
    view->addActions({hideCompleted, hideIgnored});
    view->addSeparator();
    view->addAction(releaseCalendar);
    view->addSeparator();
    view->addAction(checkForUpdates);
    m_viewMenu = view;

    auto* manage = m_window.menuBar()->addMenu(tr("&Manage"));
    manage->addAction(addFolder);
    manage->addSeparator();
    manage->addActions({recoverProjects, backup, importBackup});
}
