#include "ui/table/StarRating.h"

#include "ui/table/CellBrush.h"
#include "ui/widgets/AccentColor.h"
#include "ui/widgets/Contrast.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

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

/// The line just inside the edge of a star, as a shape to be filled: that costs less than a stroke.
const QPainterPath& outline() {
    // All edges of a star are as far from its middle, and so the inner edge is a smaller star.
    constexpr double innerScale = 0.64;
    static const QPainterPath path = [] {
        QPainterPath outer;
        outer.addPolygon(star());
        outer.setFillRule(Qt::WindingFill);
        outer = outer.simplified();
        const QTransform inwards =
            QTransform::fromTranslate(0.5, 0.5).scale(innerScale, innerScale).translate(-0.5, -0.5);
        QPainterPath line = outer;
        line.addPath(inwards.map(outer));
        line.setFillRule(Qt::OddEvenFill);
        return line;
    }();
    return path;
}

} // namespace

StarRating::StarRating(int starCount, int maxStarCount)
    : m_star(star()),
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

int StarRating::starAt(int x, const QRect& rect, Qt::LayoutDirection direction) const {
    const int side = sideOf(EditMode::ReadOnly);
    const int beyond = x - (rect.left() + (rect.width() - side * m_maxStarCount) / 2);
    if (beyond < 0 || beyond >= side * m_maxStarCount)
        return -1;
    const int place = beyond / side;
    return direction == Qt::RightToLeft ? m_maxStarCount - place : place + 1;
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
    const QBrush given = editable
        ? QBrush(Contrast::readable(getAccentColor(), palette.color(QPalette::Window), Contrast::shape))
        : cellBrush(palette, selected);
    const QBrush missing = editable ? given : outlineBrush(palette, selected);
    painter->setBrush(given);
    painter->translate(QPoint(left, top));
    painter->scale(side, side);
    if (mirrored)
        painter->translate(m_maxStarCount - 1, 0);
    for (int i = 0; i < m_maxStarCount; ++i) {
        if (i < m_starCount)
            painter->drawPolygon(m_star, Qt::WindingFill);
        else
            painter->fillPath(outline(), missing);
        painter->translate(mirrored ? -1.0 : 1.0, 0.0);
    }
    painter->restore();
}
