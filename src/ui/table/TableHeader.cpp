#include "ui/table/TableHeader.h"

#include "ui/table/CellAlignment.h"
#include "ui/table/ProgressBar.h"
#include "ui/table/StarRating.h"

#include <QStyleOptionHeader>

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
