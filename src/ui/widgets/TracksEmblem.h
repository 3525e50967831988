#pragma once

#include <QWidget>

/// A small picture of a few tracks with their regions, for places that are still empty.
class TracksEmblem : public QWidget {
    Q_OBJECT

public:
    static constexpr QSize pictureSize{152, 84};

    explicit TracksEmblem(QWidget* parent = nullptr);

    /// The picture alone, stretched over place.
    static void draw(QPainter& painter, const QRectF& place, const QPalette& palette, bool accented);

    /// In the accent colour where there is something to do, otherwise in the colour of secondary text.
    void setAccented(bool accented);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_accented = true;
};
