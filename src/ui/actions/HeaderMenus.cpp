#include "ui/actions/HeaderMenus.h"

#include <QActionGroup>
#include <QHeaderView>
#include <QMenu>
#include <QTableView>

#include <algorithm>

namespace {

constexpr int widthStep = 24;
constexpr int narrowest = 40;

QAction* addChoice(QMenu& menu, QActionGroup& group, const QString& text, bool checked) {
    QAction* action = menu.addAction(text);
    action->setCheckable(true);
    action->setChecked(checked);
    group.addAction(action);
    return action;
}

} // namespace

HeaderMenus::HeaderMenus(QTableView& table, QWidget& window)
    : QObject(&window),
      m_table(table),
      m_sort(new QMenu(tr("Sort &By"), &window)),
      m_column(new QMenu(tr("C&olumn"), &window)) {
    // The columns are those of the moment.
    connect(m_sort, &QMenu::aboutToShow, this, &HeaderMenus::fillSortMenu);
    fillSortMenu();
    m_column->addAction(tr("&Wider"), this, [this] { resizeColumn(widthStep); });
    m_column->addAction(tr("&Narrower"), this, [this] { resizeColumn(-widthStep); });
}

void HeaderMenus::fillSortMenu() {
    m_sort->clear();
    const QHeaderView& header = *m_table.horizontalHeader();
    const int sorted = header.isSortIndicatorShown() ? header.sortIndicatorSection() : -1;
    const Qt::SortOrder order = header.sortIndicatorOrder();

    auto* columns = new QActionGroup(m_sort);
    for (int column = 0; column < header.count(); ++column) {
        QString title = m_table.model()->headerData(column, Qt::Horizontal).toString().trimmed();
        title.replace(QLatin1Char('&'), QLatin1String("&&"));
        const QAction* choice = addChoice(*m_sort, *columns, title, column == sorted);
        connect(choice, &QAction::triggered, this, [this, column, order] { sort(column, order); });
    }
    connect(
        addChoice(*m_sort, *columns, tr("&Unsorted"), sorted < 0), &QAction::triggered, this,
        [this, order] { sort(-1, order); });

    m_sort->addSeparator();
    auto* orders = new QActionGroup(m_sort);
    orders->setEnabled(sorted >= 0);
    for (const auto& [text, choice] :
         {std::pair(tr("&Ascending"), Qt::AscendingOrder),
          std::pair(tr("&Descending"), Qt::DescendingOrder)}) {
        const QAction* action = addChoice(*m_sort, *orders, text, choice == order);
        connect(
            action, &QAction::triggered, this, [this, sorted, toOrder = choice] { sort(sorted, toOrder); });
    }
}

void HeaderMenus::sort(int column, Qt::SortOrder order) {
    m_table.sortByColumn(column, order);
}

void HeaderMenus::resizeColumn(int step) {
    const int column = m_table.currentIndex().column();
    if (column < 0)
        return;
    QHeaderView& header = *m_table.horizontalHeader();
    header.resizeSection(column, std::max(narrowest, header.sectionSize(column) + step));
}
