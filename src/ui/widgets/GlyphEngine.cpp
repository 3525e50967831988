#include "ui/widgets/GlyphEngine.h"

#include "ui/widgets/PixelGrid.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <optional>

namespace {

struct Colors {
    QColor normal;
    QColor disabled;
    QColor selected;
};

std::optional<Colors>& givenColors() {
    static std::optional<Colors> colors;
    return colors;
}

QColor colorFor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const Colors colors = givenColors().value_or(Colors{
        palette.color(QPalette::Text), palette.color(QPalette::Disabled, QPalette::Text),
        palette.color(QPalette::HighlightedText)});
    switch (mode) {
    case QIcon::Disabled:
        return colors.disabled;
    case QIcon::Selected:
        return colors.selected;
    default:
        return colors.normal;
    }
}

} // namespace

GlyphEngine::GlyphEngine(const QPainterPath& outline, const QRectF& cell)
    : m_outline(outline),
      m_cell(cell) {}

void GlyphEngine::setColors(const QColor& normal, const QColor& disabled, const QColor& selected) {
    givenColors() = Colors{normal, disabled, selected};
}

void GlyphEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) {
    const QRectF place = PixelGrid(*painter).squareForLines(rect);
    const double scale = place.width() / std::max(m_cell.width(), m_cell.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colorFor(mode));
    painter->translate(place.center());
    painter->scale(scale, scale);
    painter->translate(-m_cell.center());
    painter->drawPath(m_outline);
    painter->restore();
}

QPixmap GlyphEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
}

QIconEngine* GlyphEngine::clone() const {
    return new GlyphEngine(*this);
}

QString GlyphEngine::key() const {
    return QStringLiteral("GlyphEngine");
}
