#include "ui/table/TableHeader.h"

#include "ui/table/CellAlignment.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarRating.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>

#include <utility>

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const {
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    option->text = option->text.trimmed();
    option->textAlignment = cellAlignment(model()->index(0, logicalIndex).data());
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    // Bars and stars begin at the very edge of their cells, and their titles with them.
    const QVariant value = model()->index(0, logicalIndex).data();
    const bool isPainted = value.canConvert<ProgressBar>() || value.canConvert<StarRating>();
    const int margin = isPainted ? style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this) : 0;
    QHeaderView::paintSection(painter, rect.adjusted(-margin, 0, 0, 0), logicalIndex);
}

QRect TableHeader::pinnedRect() const {
    const auto* table = qobject_cast<const KeyEventTableView*>(parentWidget());
    const QRect names = table ? table->pinnedNames().rect() : QRect();
    return names.isNull() ? QRect() : QRect(names.left(), 0, names.width(), height());
}

void TableHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    const QRect pinned = pinnedRect();
    if (pinned.isNull())
        return;
    QPainter painter(viewport());
    painter.setClipRect(pinned);
    paintSection(
        &painter, pinned, static_cast<const KeyEventTableView*>(parentWidget())->pinnedNames().column());
}

void TableHeader::mousePressEvent(QMouseEvent* event) {
    m_isPinnedPressed = pinnedRect().contains(event->position().toPoint());
    if (!m_isPinnedPressed)
        QHeaderView::mousePressEvent(event);
}

void TableHeader::mouseMoveEvent(QMouseEvent* event) {
    const bool isOverPinned = pinnedRect().contains(event->position().toPoint());
    // Below the pinned title there are edges of others, which could be dragged.
    if (isOverPinned && event->buttons() == Qt::NoButton)
        unsetCursor();
    else if (!m_isPinnedPressed)
        QHeaderView::mouseMoveEvent(event);
}

void TableHeader::mouseReleaseEvent(QMouseEvent* event) {
    if (!std::exchange(m_isPinnedPressed, false))
        QHeaderView::mouseReleaseEvent(event);
    else if (event->button() == Qt::LeftButton && pinnedRect().contains(event->position().toPoint()))
        sortByPinned();
}

void TableHeader::mouseDoubleClickEvent(QMouseEvent* event) {
    m_isPinnedPressed = pinnedRect().contains(event->position().toPoint());
    if (!m_isPinnedPressed)
        QHeaderView::mouseDoubleClickEvent(event);
}

/// As a click does where the column belongs: up, down, not at all.
void TableHeader::sortByPinned() {
    const int column = static_cast<const KeyEventTableView*>(parentWidget())->pinnedNames().column();
    if (sortIndicatorSection() != column)
        setSortIndicator(column, Qt::AscendingOrder);
    else if (sortIndicatorOrder() == Qt::AscendingOrder)
        setSortIndicator(column, Qt::DescendingOrder);
    else
        setSortIndicator(-1, Qt::DescendingOrder);
}
