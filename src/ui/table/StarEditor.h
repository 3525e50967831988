#pragma once

#include "ui/table/StarRating.h"

#include <QWidget>

/// Lets the user give a rating: the stars follow the pointer and stay where the left button is
/// released, if that is on the editor. With the keyboard
/// the digits and the arrow keys give it at once.
class StarEditor : public QWidget {
    Q_OBJECT

public:
    explicit StarEditor(QWidget* parent = nullptr);

    QSize sizeHint() const override;

    void setStarRating(const StarRating& rating);

    /// The rating that is shown, which follows the pointer.
    StarRating starRating() const { return m_rating; }

    /// The rating that was given last.
    int committedCount() const { return m_committedCount; }

    /// Takes as many stars as there can be as given by the user.
    void give(int stars);

    /// The number of stars up to the position x, which is in pixels from the left edge; -1 beside the stars.
    int starAtPosition(int x) const;

signals:
    void editingFinished();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void commit(int stars);
    void showCommitted();

    StarRating m_rating;
    int m_committedCount = 0;
};
