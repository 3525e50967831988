#include "ui/sidebar/FilterTreeView.h"

#include "ui/sidebar/FilterDelegate.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <array>

namespace {

constexpr int indentationWidth = 24;
constexpr int rowInset = 8;
constexpr double rowRadius = 6.0;

/// Keys that mean something here, whatever shortcuts the window has.
bool isOwnKey(const QKeyEvent& event) {
    constexpr std::array keys{Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F2};
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    return isPlain && std::find(keys.begin(), keys.end(), event.key()) != keys.end();
}

bool isGroupWithEntries(const QModelIndex& index) {
    return index.model()->hasChildren(index);
}

QColor translucent(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

} // namespace

FilterTreeView::FilterTreeView(FolderTreeItemModel& model, QWidget* parent)
    : QTreeView(parent),
      m_model(model) {
    // Before the base class hears of it and forgets its rows.
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, &FilterTreeView::save);
    setModel(&model);
    setItemDelegate(new FilterDelegate(this));
    setAccessibleName(tr("Filters"));
    setHeaderHidden(true);
    setFrameShape(QFrame::NoFrame);
    setIndentation(indentationWidth);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    setTabKeyNavigation(false);
    setSelectionMode(QAbstractItemView::NoSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Window);
    applyColors();

    // The statuses, of which there are always many, would push the musician's own groups apart.
    for (const FilterType type : allFilterTypes)
        setExpanded(model.indexOf(type), filterTypeIsModifyable(type));
    selectionModel()->setCurrentIndex(model.indexOf(FilterType::ALL), QItemSelectionModel::NoUpdate);

    connect(this, &QTreeView::clicked, this, [this](const QModelIndex& index) {
        if (!m_isDoubleClick)
            choose(index);
    });
    connect(this, &QTreeView::collapsed, this, &FilterTreeView::leaveCollapsed);
    connect(&model, &QAbstractItemModel::modelReset, this, &FilterTreeView::restore);
}

void FilterTreeView::choose(const QModelIndex& index) {
    if (!index.isValid())
        return;
    if (isGroupWithEntries(index))
        setExpanded(index, !isExpanded(index));
    else
        emit chosen(index);
}

FilterTreeView::Place FilterTreeView::placeOf(const QModelIndex& index) {
    return {FolderTreeItemModel::typeOf(index), FolderTreeItemModel::idOf(index)};
}

QModelIndex FilterTreeView::indexOf(const Place& place) const {
    return m_model.indexOf(place.type, place.id);
}

void FilterTreeView::save() {
    m_expanded.clear();
    for (const FilterType type : allFilterTypes) {
        if (isExpanded(m_model.indexOf(type)))
            m_expanded.append(type);
    }
    const QModelIndex topmost = indexAt(QPoint(0, 0));
    m_current = placeOf(currentIndex());
    m_currentRow = currentIndex().row();
    m_topmost = placeOf(topmost);
    m_topmostY = visualRect(topmost).top();
    m_scrollPosition = verticalScrollBar()->value();
}

void FilterTreeView::restore() {
    for (const FilterType type : m_expanded)
        expand(m_model.indexOf(type));
    executeDelayedItemsLayout();
    {
        const QScopedValueRollback silent(m_isSilent, indexOf(m_current).isValid());
        selectionModel()->setCurrentIndex(restoredCurrent(), QItemSelectionModel::NoUpdate);
    }

    verticalScrollBar()->setValue(m_scrollPosition);
    const QModelIndex topmost = indexOf(m_topmost);
    if (topmost.isValid() && m_scrollPosition > 0)
        verticalScrollBar()->setValue(m_scrollPosition + visualRect(topmost).top() - m_topmostY);
    emit restored();
}

QModelIndex FilterTreeView::restoredCurrent() const {
    const QModelIndex current = indexOf(m_current);
    if (current.isValid())
        return current;
    // The entry is gone: what stands in its place now, or the group when it is the last one.
    const QModelIndex group = m_model.indexOf(m_current.type);
    const int count = m_model.rowCount(group);
    return count > 0 ? m_model.index(std::min(m_currentRow, count - 1), 0, group) : group;
}

void FilterTreeView::leaveCollapsed(const QModelIndex& group) {
    if (currentIndex().parent() == group)
        selectionModel()->setCurrentIndex(group, QItemSelectionModel::NoUpdate);
}

bool FilterTreeView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && isOwnKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTreeView::event(event);
}

void FilterTreeView::keyPressEvent(QKeyEvent* event) {
    if (!isOwnKey(*event)) {
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
    if (event->isAutoRepeat())
        return;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose(currentIndex());
        break;
    case Qt::Key_F2:
        emit renamingWished();
        break;
    default:
        emit removalWished();
    }
}

void FilterTreeView::mousePressEvent(QMouseEvent* event) {
    m_isDoubleClick = false;
    QTreeView::mousePressEvent(event);
}

void FilterTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    // The click that ends it is not a second one: it would close the group that the first has opened.
    QTreeView::mouseDoubleClickEvent(event);
    m_isDoubleClick = true;
}

void FilterTreeView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard)
        emit menuWished(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
    else if (indexAt(event->pos()).isValid())
        emit menuWished(event->globalPos());
}

void FilterTreeView::drawRow(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QRect row = option.rect.adjusted(rowInset, 1, -rowInset, -1);
    const QPoint cursor = viewport()->mapFromGlobal(QCursor::pos());
    QColor fill = Qt::transparent;
    if (selectionModel()->isSelected(index))
        fill = translucent(palette().color(QPalette::Active, QPalette::Highlight), 0.2F);
    else if (viewport()->underMouse() && option.rect.contains(cursor))
        fill = translucent(palette().color(QPalette::Text), 0.06F);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawRoundedRect(row, rowRadius, rowRadius);
    if (index == currentIndex()) {
        const double width = hasFocus() ? 2.0 : 1.0;
        const double half = width / 2;
        const QColor color =
            hasFocus() ? ControlPainting::accentShape(palette()) : ControlPainting::edgeColor(palette());
        painter->setPen(QPen(color, width));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(row).adjusted(half, half, -half, -half), rowRadius, rowRadius);
    }
    painter->restore();

    // The ground left of the item, which the base class would fill.
    QStyleOptionViewItem item(option);
    item.palette.setColor(QPalette::Highlight, Qt::transparent);
    QTreeView::drawRow(painter, item, index);
}

void FilterTreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
    if (!isGroupWithEntries(index))
        return;
    const double forward = isRightToLeft() ? -1.0 : 1.0;
    const QPointF center = QRectF(rect).center() + QPointF(rowInset * forward, 0);
    const auto point = [&](double along, double across) {
        return isExpanded(index) ? center + QPointF(across, along)
                                 : center + QPointF(along * forward, across);
    };
    const std::array chevron{point(-2, -4), point(2, 0), point(-2, 4)};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor color = Contrast::secondaryText(palette(), QPalette::Window);
    painter->setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(chevron.data(), static_cast<int>(chevron.size()));
    painter->restore();
}

void FilterTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    // To a screen reader the base class reports the focus at the item, wherever the keyboard is.
    if (hasFocus() && !m_isSilent)
        QTreeView::currentChanged(current, previous);
    else
        QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    // The base class paints two items anew, the mark goes over whole rows.
    viewport()->update();
}

void FilterTreeView::changeEvent(QEvent* event) {
    QTreeView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void FilterTreeView::applyColors() {
    // The scroll bar lies on the sidebar's ground.
    QPalette colors;
    colors.setColor(QPalette::Base, palette().color(QPalette::Window));
    verticalScrollBar()->setPalette(colors);
}
