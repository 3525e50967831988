#pragma once

#include <QObject>

class QAction;
class QMainWindow;
class QMenu;

/// The window's actions with their texts, shortcuts and menus. What they do is connected elsewhere.
class WindowActions : public QObject {
    Q_OBJECT

public:
    /// The actions belong to the window, whose shortcuts they are.
    explicit WindowActions(QMainWindow& window);

    /// Fills the menu bar. Goes last, when the sub-menus exist.
    void setupMenus(const QList<QMenu*>& associationMenus, const QList<QMenu*>& valueMenus);

    /// Null before the menu bar is filled.
    QMenu* viewMenu() const { return m_viewMenu; }

    // Actions of the selected project.
    QAction* open;
    QAction* showInFinder;
    QAction* showPackageContents;
    QAction* release;
    QAction* ignore;
    QAction* deleteRecord;

    QAction* settings;
    QAction* quit;
    QAction* undo;
    QAction* redo;

    QAction* scrollToTop;
    QAction* collapseAllFilters;
    QAction* showSidebar;
    QAction* hideSidebar;
    QAction* showDetails;
    QAction* hideDetails;
    QAction* hideCompleted;
    QAction* hideIgnored;
    QAction* releaseCalendar;
    QAction* search;
    QAction* checkForUpdates;

    QAction* addFolder;
    QAction* recoverProjects;
    QAction* backup;
    QAction* importBackup;

    /// Those that are about the bundle say why they are off where it is not there.
    void enableForSelection(bool isSelected, bool isMissing);

    QList<QAction*> ofSelectedProject() const {
        return {open, showInFinder, showPackageContents, ignore, deleteRecord};
    }

private:
    void describeBundleActions(bool isMissing);
    QAction* make(const QString& text, const QList<QKeySequence>& shortcuts = {});

    QMainWindow& m_window;
    QMenu* m_viewMenu = nullptr;
};
