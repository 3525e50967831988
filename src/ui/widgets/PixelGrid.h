#pragma once

#include <QPainter>
#include <QRectF>

/// The pixels of the device that a painter draws on, so that lines and edges fall on them at any scale. All
/// numbers are in the painter's units.
class PixelGrid {
public:
    explicit PixelGrid(const QPainter& painter);

    /// The nearest rectangle whose edges lie between pixels.
    QRectF snapped(const QRectF& rect) const;
    /// The square in the middle of rect for a picture of thin lines. A small one has a middle row and column
    /// of pixels, for the lines through the picture's middle, and for that may be one pixel larger than rect.
    QRectF squareForLines(const QRectF& rect) const;
    /// The nearest width that is a whole number of pixels, at least one.
    double lineWidth(double width) const;

private:
    QTransform m_toDevice;
    QTransform m_fromDevice;
};
