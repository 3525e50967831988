#pragma once

#include <QObject>

class QKeySequence;
class QMenu;
class QTableView;
class TableColumns;

/// What the mouse does at the header of the projects, for the keyboard: menus to sort by a column, and to
/// move, show and hide columns and change their widths. The header has a context menu, too.
class HeaderMenus : public QObject {
    Q_OBJECT

public:
    /// The table and its columns outlive this object.
    HeaderMenus(QTableView& table, TableColumns& columns, QWidget& window);

    QMenu* sortMenu() const { return m_sort; }

    /// For the column of the current cell.
    QMenu* columnMenu() const { return m_column; }

private:
    void fillSortMenu();
    void fillColumnMenu();
    void addMove(const QString& text, const QKeySequence& key, int step);
    void fillShownMenu();
    void sort(int column, Qt::SortOrder order);
    void resizeColumn(int step);

    QTableView& m_table;
    TableColumns& m_columns;
    QMenu* m_sort;
    QMenu* m_column;
    QMenu* m_shown;
};
