#include "ui/widgets/ElidedTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

QString wrappingTip(const QString& text) {
    return QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

bool isElided(const QAbstractItemView& view, const QStyleOptionViewItem& item) {
    // The base class of delegates leaves this margin at both sides of a text, too.
    const int margin = view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, &view) + 1;
    const QRect place = view.style()->subElementRect(QStyle::SE_ItemViewItemText, &item, &view);
    const int room = place.width() - 2 * margin;
    return item.fontMetrics.horizontalAdvance(item.text) > room;
}

bool showElidedTip(const QHelpEvent& event, QAbstractItemView& view, const QStyleOptionViewItem& item) {
    if (event.type() != QEvent::ToolTip || !isElided(view, item))
        return false;
    QToolTip::showText(event.globalPos(), wrappingTip(item.text), view.viewport(), item.rect);
    return true;
}
