#pragma once

#include "database/FilterType.h"

#include <QList>
#include <QObject>

class AssociationMenu;
class CurrentFilter;
class FolderTreeItemModel;
class QMenu;
class QWidget;
class SelectionEditor;
class ValueMenus;
class WindowActions;
struct SelectionSummary;

/// What menus offer for the selected projects: the sub-menus that file, rate and mark them, and the table's
/// context menu.
class ProjectMenus : public QObject {
    Q_OBJECT

public:
    /// All outlive this object, which the window owns.
    ProjectMenus(
        WindowActions& actions, SelectionEditor& editor, const CurrentFilter& filter, QWidget& window);

    QList<QMenu*> associationMenus() const;
    QList<QMenu*> valueMenus() const;

    void setEntries(const FolderTreeItemModel& entries);
    /// Marks what the selected projects have; without one nothing is offered. isMissing: the current one's
    /// bundle is not there.
    void setSelection(const SelectionSummary& summary, bool isMissing);
    void popUp(const QPoint& globalPosition);

signals:
    /// A new collection, genre or tag, to be assigned to the selected projects.
    void newRequested(FilterType type);
    /// For what is selected in the table at that moment.
    void ratingRequested(int stars);

private:
    void addRemovalFromFilter(QMenu& menu);

    WindowActions& m_actions;
    SelectionEditor& m_editor;
    const CurrentFilter& m_filter;
    QWidget& m_window;
    QList<AssociationMenu*> m_menus;
    ValueMenus* m_values;
    bool m_hasSelection = false;
};
