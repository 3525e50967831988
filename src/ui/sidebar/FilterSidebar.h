#pragma once

#include "database/FilterType.h"

#include <QWidget>

class FilterTreeView;
class FolderTreeItemModel;
class QPushButton;

/// The tree of what the projects can be narrowed by, with the buttons that add and remove entries below it.
///
/// Two things are marked in the tree. The selected entry is what the table shows at the moment. The current
/// one is where the keyboard is and what the buttons act on; moving it filters nothing.
class FilterSidebar : public QWidget {
    Q_OBJECT

public:
    /// model outlives the sidebar.
    explicit FilterSidebar(FolderTreeItemModel& model, QWidget* parent = nullptr);

    void collapseAll();
    QList<FilterType> foldedGroups() const;
    /// All others are opened.
    void foldGroups(const QList<FilterType>& groups);

    /// Marks what the table shows; emits nothing. An entry that is not there yet is marked when a reload
    /// brings it. Groups have the id -1.
    void setCurrent(FilterType type, qint64 id = -1);

    /// Activates the entry as a click does, once a reload brings it.
    void activateAfterReload(FilterType type, qint64 id);

    /// What setCurrent() has marked last.
    FilterType shownType() const { return m_shownType; }

    qint64 shownEntryId() const { return m_shownId; }

    FilterType currentType() const;
    /// -1 when a group is current.
    qint64 currentEntryId() const;
    /// Empty when a group is current.
    QString currentName() const;

signals:
    /// By a click or Return. Of the groups only "All" and "Last Search" can be activated, with the id -1 and
    /// no name.
    void activated(FilterType type, qint64 id, const QString& name);
    void addRequested(FilterType type);
    void removeRequested(FilterType type, qint64 id, const QString& name);
    void renameRequested(FilterType type, qint64 id, const QString& name);

private:
    void layOut();
    void setUpEvents();
    void activate(const QModelIndex& index);
    void requestRemoval();
    void requestRenaming();
    void showMenu(const QPoint& globalPosition);
    void markShown();
    void activateAwaited();
    void updateButtons();

    FolderTreeItemModel& m_model;
    FilterTreeView* m_tree;
    QPushButton* m_addButton;
    QPushButton* m_removeButton;
    FilterType m_shownType = FilterType::ALL;
    qint64 m_shownId = -1;
    bool m_isShownAwaited = false; ///< as after a start, when the entries have not come yet
    FilterType m_awaitedType = FilterType::ALL;
    qint64 m_awaitedId = -1; ///< -1: none is
};
