#include "ui/widgets/TracksEmblem.h"

#include "ui/widgets/AccentColor.h"

#include <QPainter>

#include <array>

namespace {

constexpr QSize pictureSize{152, 84};
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
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor color = m_accented ? getAccentColor() : palette().color(QPalette::PlaceholderText);
    const double fullAlpha = m_accented ? 1.0 : 0.5;
    for (const Region& region : regions) {
        color.setAlphaF(static_cast<float>(region.strength * fullAlpha));
        painter.setBrush(color);
        painter.drawRoundedRect(region.place, radius, radius);
    }
    painter.setBrush(palette().color(m_accented ? QPalette::WindowText : QPalette::PlaceholderText));
    painter.drawRoundedRect(QRectF(playheadX, 0, 2, pictureSize.height()), 1, 1);
}
