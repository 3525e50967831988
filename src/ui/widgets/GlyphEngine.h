#pragma once

#include <QColor>
#include <QIconEngine>
#include <QPainterPath>

/// Draws one outline as an icon: in the device's own pixels, and in the colours of the moment.
class GlyphEngine : public QIconEngine {
public:
    /// cell is the square, or what comes nearest to it, that the outline stands in.
    GlyphEngine(const QPainterPath& outline, const QRectF& cell);

    static void setColors(const QColor& normal, const QColor& disabled, const QColor& selected);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    QString key() const override;

private:
    QPainterPath m_outline;
    QRectF m_cell;
};
