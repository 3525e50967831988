#include "ui/widgets/ImageView.h"

#include "ui/widgets/AccessibleRole.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/TracksEmblem.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double radius = 6.0;
constexpr QSize preferredSize{320, 200};
constexpr QSize smallestSize{160, 100};

/// 16:10, as a musician's screen that the picture was taken of.
int heightFor(int width) {
    return width * 10 / 16;
}

} // namespace

ImageView::ImageView(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMinimumSize(smallestSize);
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(tr("Project picture"));
    clear();
}

void ImageView::setImage(const QImage& image, const QString& reason) {
    m_image = image;
    m_reason = reason.isEmpty() ? tr("No picture") : reason;
    m_scaled = {};
    setAccessibleDescription(hasImage() ? QString() : m_reason);
    update();
}

void ImageView::clear() {
    setImage({});
}

int ImageView::heightForWidth(int width) const {
    return heightFor(width);
}

QSize ImageView::sizeHint() const {
    return preferredSize;
}

QSize ImageView::minimumSizeHint() const {
    return smallestSize;
}

QRect ImageView::pictureRect() const {
    const QSize ownSize = m_image.size() / devicePixelRatioF();
    const bool isSmaller = ownSize.width() <= width() && ownSize.height() <= height();
    const QSize shown = isSmaller ? ownSize : ownSize.scaled(size(), Qt::KeepAspectRatio);
    QRect place(QPoint(), shown.expandedTo({1, 1}));
    place.moveCenter(rect().center());
    return place;
}

const QPixmap& ImageView::scaledTo(const QSize& devicePixels) {
    if (m_scaled.size() != devicePixels) {
        m_scaled =
            QPixmap::fromImage(m_image.scaled(devicePixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    return m_scaled;
}

void ImageView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (!hasImage()) {
        drawPlaceholder(painter);
        return;
    }
    const QRect place = pictureRect();
    const QPixmap& picture = scaledTo(place.size() * devicePixelRatioF());
    // A brush, since a clip would cut the corners without smoothing them.
    QTransform toPlace = QTransform::fromTranslate(place.x(), place.y());
    toPlace.scale(double(place.width()) / picture.width(), double(place.height()) / picture.height());
    QBrush brush(picture);
    brush.setTransform(toPlace);
    painter.setBrush(brush);
    painter.drawRoundedRect(place, radius, radius);
}

void ImageView::drawPlaceholder(QPainter& painter) const {
    constexpr int gap = 12;
    QColor ground = palette().color(QPalette::WindowText);
    ground.setAlphaF(0.04F);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), radius, radius);

    const QSize emblem = TracksEmblem::pictureSize / 2;
    const int lineHeight = fontMetrics().height();
    QRect column(0, 0, width(), emblem.height() + gap + lineHeight);
    column.moveCenter(rect().center());
    const QPointF corner((width() - emblem.width()) / 2.0, column.top());
    TracksEmblem::draw(painter, QRectF(corner, emblem), palette(), false);
    painter.setPen(Contrast::secondaryText(palette(), QPalette::Window));
    painter.drawText(column, Qt::AlignHCenter | Qt::AlignBottom, m_reason);
}
