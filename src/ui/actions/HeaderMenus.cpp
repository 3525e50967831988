#include "ui/actions/HeaderMenus.h"

#include "ui/actions/MenuText.h"
#include "ui/table/TableColumns.h"

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

HeaderMenus::HeaderMenus(QTableView& table, TableColumns& columns, QWidget& window)
    : QObject(&window),
      m_table(table),
      m_columns(columns),
      m_sort(new QMenu(tr("Sort &By"), &window)),
      m_column(new QMenu(tr("C&olumn"), &window)),
      m_shown(new QMenu(tr("&Show"), &window)) {
    // The columns are those of the moment.
    connect(m_sort, &QMenu::aboutToShow, this, &HeaderMenus::fillSortMenu);
    fillSortMenu();
    connect(m_shown, &QMenu::aboutToShow, this, &HeaderMenus::fillShownMenu);
    fillColumnMenu();
    auto* header = table.horizontalHeader();
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this, header](const QPoint& position) {
        m_shown->popup(header->mapToGlobal(position));
    });
}

void HeaderMenus::fillColumnMenu() {
    m_column->addAction(tr("&Wider"), this, [this] { resizeColumn(widthStep); });
    m_column->addAction(tr("&Narrower"), this, [this] { resizeColumn(-widthStep); });
    m_column->addSeparator();
    addMove(tr("Move &Left"), Qt::ALT | Qt::Key_Left, -1);
    addMove(tr("Move &Right"), Qt::ALT | Qt::Key_Right, 1);
    m_column->addSeparator();
    m_column->addMenu(m_shown);
}

/// step is to the right, where the columns may begin.
void HeaderMenus::addMove(const QString& text, const QKeySequence& key, int step) {
    QAction* action = m_column->addAction(
        text, this, [this, step] { m_columns.moveCurrent(m_table.isRightToLeft() ? -step : step); });
    action->setShortcut(key);
    // Elsewhere these keys move in a text.
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_table.addAction(action);
}

void HeaderMenus::fillShownMenu() {
    m_shown->clear();
    const auto fields = m_columns.fields();
    for (const auto& field : fields) {
        QAction* choice = m_shown->addAction(menuText(field.displayName.trimmed()));
        choice->setCheckable(true);
        choice->setChecked(field.visible != 0);
        choice->setEnabled(field.visible == 0 || m_columns.canHide(field));
        connect(choice, &QAction::triggered, this, [this, name = field.name](bool shown) {
            m_columns.show(name, shown);
        });
    }
}

void HeaderMenus::fillSortMenu() {
    m_sort->clear();
    const QHeaderView& header = *m_table.horizontalHeader();
    const int sorted = header.isSortIndicatorShown() ? header.sortIndicatorSection() : -1;
    const Qt::SortOrder order = header.sortIndicatorOrder();

    auto* columns = new QActionGroup(m_sort);
    for (int place = 0; place < header.count(); ++place) {
        const int column = header.logicalIndex(place);
        const QString title =
            menuText(m_table.model()->headerData(column, Qt::Horizontal).toString().trimmed());
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
