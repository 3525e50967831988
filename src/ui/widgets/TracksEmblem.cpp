#include "ui/widgets/TracksEmblem.h"

#include "ui/widgets/AccentColor.h"

#include <QPainter>

#include <array>

namespace {

constexpr double radius = 6.0;
constexpr int playheadX = 92;

struct Region {
    QRect place;
    double strength = 0; ///< share of the full colour
};

constexpr std::array regions{Region{{0, 4, 64, 20}, 0.9},    Region{{68, 4, 48, 20}, 0.45},
                             Region{{20, 32, 96, 20}, 0.65}, Region{{120, 32, 32, 20}, 0.3},
                             Region{{0, 60, 40, 20}, 0.3},   Region{{44, 60, 88, 20}, 0.8}};

} // namespace

TracksEmblem::TracksEmblem(QWidget* parent) : QWidget(parent) {
    setFixedSize(pictureSize);
}

void TracksEmblem::setAccented(bool accented) {
    m_accented = accented;
    update();
}

QSize TracksEmblem::sizeHint() const {
    return pictureSize;
}

void TracksEmblem::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    draw(painter, rect(), palette(), m_accented);
}

void TracksEmblem::draw(QPainter& painter, const QRectF& place, const QPalette& palette, bool accented) {
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(place.width() / pictureSize.width(), place.height() / pictureSize.height());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor color = accented ? getAccentColor() : palette.color(QPalette::PlaceholderText);
    const double fullAlpha = accented ? 1.0 : 0.5;
    for (const Region& region : regions) {
        color.setAlphaF(static_cast<float>(region.strength * fullAlpha));
        painter.setBrush(color);
        painter.drawRoundedRect(region.place, radius, radius);
    }
    painter.setBrush(palette.color(accented ? QPalette::WindowText : QPalette::PlaceholderText));
    painter.drawRoundedRect(QRectF(playheadX, 0, 2, pictureSize.height()), 1, 1);
    painter.restore();
}
