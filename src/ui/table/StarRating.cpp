#include "ui/table/StarRating.h"

#include "ui/table/CellBrush.h"
#include "ui/widgets/AccentColor.h"
#include "ui/widgets/Contrast.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int smallestSide = 20;
constexpr int smallestTarget = 24;

int sideOf(StarRating::EditMode mode) {
    const int smallest = mode == StarRating::EditMode::Editable ? smallestTarget : smallestSide;
    return std::max(smallest, QFontMetrics(QGuiApplication::font()).height());
}

// In units of a star's side. Copies share their points.

const QPolygonF& star() {
    static const QPolygonF polygon{
        {0.5000006, 0.0},
        {0.7938929, 0.9045083},
        {0.0244713, 0.3454928},
        {0.9755275, 0.3454893},
        {0.2061102, 0.9045106}};
    return polygon;
}

const QPolygonF& diamond() {
    static const QPolygonF polygon{{0.4, 0.5}, {0.5, 0.4}, {0.6, 0.5}, {0.5, 0.6}, {0.4, 0.5}};
    return polygon;
}

} // namespace

StarRating::StarRating(int starCount, int maxStarCount)
    : m_star(star()),
      m_diamond(diamond()),
      m_starCount(starCount),
      m_maxStarCount(maxStarCount) {}

QSize StarRating::sizeHint(EditMode mode) const {
    const int side = sideOf(mode);
    return {side * m_maxStarCount, side};
}

QString StarRating::accessibleText() const {
    if (m_starCount <= 0)
        return QCoreApplication::translate("StarRating", "Not rated");
    return QCoreApplication::translate("StarRating", "%1 of %2 stars").arg(m_starCount).arg(m_maxStarCount);
}

void StarRating::paint(
    QPainter* painter, const QRect& rect, const QPalette& palette, EditMode mode, bool selected) {
    m_paintRect = rect;
    const bool editable = mode == EditMode::Editable;
    const int side = sideOf(mode);
    const int left = rect.left() + (rect.width() - side * m_maxStarCount) / 2;
    const int top = rect.top() + (rect.height() - side) / 2;
    const bool mirrored = painter->layoutDirection() == Qt::RightToLeft;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(
        editable
            ? QBrush(Contrast::readable(getAccentColor(), palette.color(QPalette::Window), Contrast::shape))
            : cellBrush(palette, selected));
    painter->translate(QPoint(left, top));
    painter->scale(side, side);
    if (mirrored)
        painter->translate(m_maxStarCount - 1, 0);
    for (int i = 0; i < m_maxStarCount; ++i) {
        if (i < m_starCount)
            painter->drawPolygon(m_star, Qt::WindingFill);
        else if (editable)
            painter->drawPolygon(m_diamond, Qt::WindingFill);
        painter->translate(mirrored ? -1.0 : 1.0, 0.0);
    }
    painter->restore();
}
