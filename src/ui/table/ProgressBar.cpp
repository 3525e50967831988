#include "ui/table/ProgressBar.h"

#include "ui/table/CellBrush.h"

#include <QCoreApplication>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr double heightShare = 0.4;
constexpr double radius = 5.0;

} // namespace

QSize ProgressBar::sizeHint() const {
    return {40, 10};
}

QString ProgressBar::accessibleText() const {
    return QCoreApplication::translate("ProgressBar", "%1%").arg(qRound(m_progress * 100.0F));
}

void ProgressBar::paint(QPainter* painter, const QPalette& palette, const QRect& rect, bool selected) const {
    const int height = static_cast<int>(rect.height() * heightShare);
    const int width = static_cast<int>(std::clamp(m_progress, 0.0F, 1.0F) * static_cast<float>(rect.width()));
    const int y = rect.top() + (rect.height() - height) / 2;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(trackBrush(palette, selected));
    painter->drawRoundedRect(QRect(rect.left(), y, rect.width(), height), radius, radius);
    painter->setBrush(cellBrush(palette, selected));
    const QRect bar(rect.left(), y, width, height);
    const bool mirrored = painter->layoutDirection() == Qt::RightToLeft;
    const QRect place = mirrored ? QStyle::visualRect(Qt::RightToLeft, rect, bar) : bar;
    painter->drawRoundedRect(place, radius, radius);
    painter->restore();
}
