#include "ui/widgets/ElidedTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

bool showElidedTip(const QHelpEvent& event, QAbstractItemView& view, const QStyleOptionViewItem& item) {
    // The base class of delegates leaves this margin at both sides of a text, too.
    const int margin = view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, &view) + 1;
    const QRect place = view.style()->subElementRect(QStyle::SE_ItemViewItemText, &item, &view);
    const int room = place.width() - 2 * margin;
    if (event.type() != QEvent::ToolTip || item.fontMetrics.horizontalAdvance(item.text) <= room)
        return false;
    // Escaped, as a text may look like markup; as markup it wraps.
    QToolTip::showText(
        event.globalPos(), QStringLiteral("<p>%1</p>").arg(item.text.toHtmlEscaped()), view.viewport(),
        item.rect);
    return true;
}
