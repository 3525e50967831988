#include "ui/widgets/PixelGrid.h"

#include <algorithm>
#include <cmath>

PixelGrid::PixelGrid(const QPainter& painter)
    : m_toDevice(painter.deviceTransform()),
      m_fromDevice(m_toDevice.inverted()) {}

QRectF PixelGrid::snapped(const QRectF& rect) const {
    const QRectF device = m_toDevice.mapRect(rect);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return m_fromDevice.mapRect(QRectF(topLeft, bottomRight));
}

QRectF PixelGrid::squareForLines(const QRectF& rect) const {
    // Up to here the lines of an icon are about one pixel wide.
    constexpr int largestSmall = 28;
    const QRectF device = m_toDevice.mapRect(rect);
    int side = static_cast<int>(std::lround(std::min(device.width(), device.height())));
    if (side <= largestSmall)
        side |= 1;
    const QPointF corner = device.center() - QPointF(side, side) / 2;
    return m_fromDevice.mapRect(QRectF(std::floor(corner.x()), std::floor(corner.y()), side, side));
}

double PixelGrid::lineWidth(double width) const {
    const double scale = m_toDevice.m11();
    return scale > 0 ? std::max(1.0, std::round(width * scale)) / scale : width;
}
