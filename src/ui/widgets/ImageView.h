#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

/// Shows a picture in its own proportions, or a calm stand-in that says that there is none. It asks for 16:10
/// in its layout.
class ImageView : public QWidget {
    Q_OBJECT

public:
    explicit ImageView(QWidget* parent = nullptr);

    /// Without an image, reason says why there is none. Pictures smaller than the view are shown in their own
    /// size.
    void setImage(const QImage& image, const QString& reason = {});
    void clear();

    bool hasImage() const { return !m_image.isNull(); }

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The picture in the device pixels of the place it is shown in, scaled anew only when those change.
    const QPixmap& scaledTo(const QSize& devicePixels);
    QRect pictureRect() const;
    void drawPlaceholder(QPainter& painter) const;

    QImage m_image;
    QString m_reason;
    QPixmap m_scaled;
};
