#include "ui/sidebar/FilterDelegate.h"

#include "ui/widgets/ElidedTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int rowHeight = 28;
constexpr int textPadding = 8;
constexpr int rightMargin = 12;

} // namespace

FilterDelegate::FilterDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QString FilterDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const {
    return value.toString().replace(u'\n', u' ');
}

QSize FilterDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    return {0, std::max(rowHeight, option.fontMetrics.height() + textPadding)};
}

void FilterDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QRect all = option->rect;
    option->rect = QStyle::visualRect(option->direction, all, all.adjusted(0, 0, -rightMargin, 0));
    if (option->state.testFlag(QStyle::State_Selected)) {
        option->font.setWeight(QFont::DemiBold);
        option->fontMetrics = QFontMetrics(option->font);
    }
    // The sidebar lies on the ground of the window.
    option->palette.setColor(QPalette::Text, option->palette.color(QPalette::WindowText));
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
}

bool FilterDelegate::helpEvent(
    QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
    const QModelIndex& index) {
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    return showElidedTip(*event, *view, item) || QStyledItemDelegate::helpEvent(event, view, option, index);
}
