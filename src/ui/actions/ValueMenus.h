#pragma once

#include "ui/sidebar/FolderTreeItemModel.h"

#include <QList>
#include <QMap>
#include <QObject>

class QMenu;
class QWidget;
class SelectionEditor;
class ValueMenu;
struct SelectionSummary;

/// The sub-menus that rate the selected projects, and set their progress and their statuses.
class ValueMenus : public QObject {
    Q_OBJECT

public:
    /// The keys that rate are the window's. Both outlive this object.
    ValueMenus(SelectionEditor& editor, QWidget& window);

    QList<QMenu*> menus() const { return {m_menus.begin(), m_menus.end()}; }

    void setEntries(const FolderTreeItemModel& entries);
    void setSelection(const SelectionSummary& summary);

signals:
    /// Also by a key, which means what is selected in the table at that moment.
    void ratingRequested(int stars);

private:
    ValueMenu* makeRating(QWidget& window);
    ValueMenu* makeProgress(QWidget& window);
    QMenu* makeStatuses(QWidget& window);

    SelectionEditor& m_editor;
    QMap<FilterType, ValueMenu*> m_statuses;
    QMap<FilterType, QList<FolderTreeItemModel::Entry>> m_entries;
    ValueMenu* m_rating;
    ValueMenu* m_progress;
    QList<QMenu*> m_menus;
};
