#pragma once

#include <QObject>

class QMenu;
class QTableView;

/// What the mouse does at the header of the projects, for the keyboard: menus to sort by a column and to
/// change the width of one.
class HeaderMenus : public QObject {
    Q_OBJECT

public:
    /// The table outlives this object.
    HeaderMenus(QTableView& table, QWidget& window);

    QMenu* sortMenu() const { return m_sort; }

    /// For the column of the current cell.
    QMenu* columnMenu() const { return m_column; }

private:
    void fillSortMenu();
    void sort(int column, Qt::SortOrder order);
    void resizeColumn(int step);

    QTableView& m_table;
    QMenu* m_sort;
    QMenu* m_column;
};
