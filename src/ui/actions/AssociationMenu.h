#pragma once

#include "ui/sidebar/FolderTreeItemModel.h"

#include <QMenu>
#include <QSet>

class QActionGroup;

/// The sub-menu that puts the selected projects into a collection or a genre, or gives them a tag. Check
/// marks show what the current one has.
class AssociationMenu : public QMenu {
    Q_OBJECT

public:
    /// type is collections, genres or tags.
    explicit AssociationMenu(FilterType type, QWidget* parent = nullptr);

    FilterType type() const { return m_type; }

    void setEntries(const QList<FolderTreeItemModel::Entry>& entries);
    void setChecked(const QSet<qint64>& ids);

signals:
    void associateRequested(FilterType type, qint64 id);
    void disassociateRequested(FilterType type, qint64 id);
    /// A new entry, to be assigned to the selected projects.
    void newRequested(FilterType type);

private:
    void toggle(QAction* entry);
    void showChecked();

    const FilterType m_type;
    QActionGroup* m_group;
    QAction* m_separator;
    QList<FolderTreeItemModel::Entry> m_entries;
    QSet<qint64> m_checked;
};
