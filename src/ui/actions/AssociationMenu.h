#pragma once

#include "ui/sidebar/FolderTreeItemModel.h"

#include <QHash>
#include <QMenu>

class QActionGroup;

/// The sub-menu that puts the selected projects into a collection or a genre, or gives them a tag. An entry
/// that all of them have is checked, and choosing it takes it from them; one that some have has a dash and
/// says how many, and choosing it gives it to all.
class AssociationMenu : public QMenu {
    Q_OBJECT

public:
    /// type is collections, genres or tags.
    explicit AssociationMenu(FilterType type, QWidget* parent = nullptr);

    FilterType type() const { return m_type; }

    void setEntries(const QList<FolderTreeItemModel::Entry>& entries);
    /// How many of the selected projects each entry has, and how many projects are selected.
    void setCounts(const QHash<qint64, int>& counts, int selectedCount);

signals:
    void associateRequested(FilterType type, qint64 id);
    void disassociateRequested(FilterType type, qint64 id);
    /// A new entry, to be assigned to the selected projects.
    void newRequested(FilterType type);

protected:
    void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

private:
    void toggle(QAction* entry);
    void showCounts();
    bool haveAll(qint64 id) const;
    bool haveSome(qint64 id) const;

    const FilterType m_type;
    QActionGroup* m_group;
    QAction* m_separator;
    QList<FolderTreeItemModel::Entry> m_entries;
    QHash<qint64, int> m_counts;
    int m_selectedCount = 0;
};
