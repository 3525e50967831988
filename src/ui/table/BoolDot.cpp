#include "ui/table/BoolDot.h"

#include "ui/table/CellBrush.h"

#include <QCoreApplication>
#include <QPainter>

namespace {

constexpr int diameter = 10;
constexpr int shiftToTheLeft = 5;
constexpr int cellSide = 40;

} // namespace

QSize BoolDot::sizeHint() const {
    return {cellSide, cellSide};
}

QString BoolDot::accessibleText() const {
    return m_value ? QCoreApplication::translate("BoolDot", "Yes")
                   : QCoreApplication::translate("BoolDot", "No");
}

void BoolDot::paint(QPainter* painter, const QPalette& palette, const QRect& rect, bool selected) const {
    if (!m_value)
        return;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(cellBrush(palette, selected));
    const int x = rect.left() + (rect.width() - diameter) / 2 - shiftToTheLeft;
    const int y = rect.top() + (rect.height() - diameter) / 2;
    painter->drawRoundedRect(QRect(x, y, diameter, diameter), diameter / 2.0, diameter / 2.0);
    painter->restore();
}
