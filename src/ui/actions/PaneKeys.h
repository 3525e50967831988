#pragma once

#include <QList>
#include <QObject>

class QAction;
class QMainWindow;
class SidePanes;

/// Keys that go round the window's panes, open its menu and move the edges between the panes.
class PaneKeys : public QObject {
    Q_OBJECT

public:
    /// panes, from the first to the last: the sidebar, the projects and the details. All outlive this object.
    PaneKeys(QMainWindow& window, SidePanes& sidePanes, const QList<QWidget*>& panes);

    /// Change the pane that has the keyboard.
    QList<QAction*> widthActions() const { return m_widthActions; }

private:
    /// -1 where the keyboard is in none.
    int currentPane() const;
    void goOn(int step);
    void openMenu();
    void widen(int step);

    QMainWindow& m_window;
    SidePanes& m_sidePanes;
    QList<QWidget*> m_panes;
    QList<QAction*> m_widthActions;
};
