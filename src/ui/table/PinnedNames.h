#pragma once

#include <QModelIndex>
#include <QRect>

class QPainter;
class QStyleOptionViewItem;
class QTableView;

/// The column of the names, which stays at the edge where one begins to read when the table is scrolled
/// sideways beyond it. Nothing is pinned where it would take most of the table.
class PinnedNames {
public:
    /// table outlives this object.
    explicit PinnedNames(const QTableView& table) : m_table(table) {}

    /// -1 where there is none.
    int column() const;
    /// Of the whole column in the viewport; null while the column is where it belongs.
    QRect rect() const;
    QRect rect(const QModelIndex& index) const;
    /// Below a point of rect().
    QModelIndex indexAt(const QPoint& position) const;
    /// How far a column reaches below the pinned one.
    int overlap(int column) const;

    /// The cells that lie in the area. option is as the view begins with it for each cell.
    void paint(QPainter& painter, const QRect& area, QStyleOptionViewItem option) const;

private:
    int distanceToEdge(int column) const;

    const QTableView& m_table;
};
