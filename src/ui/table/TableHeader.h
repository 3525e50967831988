#pragma once

#include <QHeaderView>

/// The projects table's header: every title stands as the values below it do. That of pinned names stays
/// with them; a click on it sorts, and to be moved or resized the column has to be where it belongs.
class TableHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;

private:
    QRect pinnedRect() const;
    void sortByPinned();

    bool m_isPinnedPressed = false;
};
