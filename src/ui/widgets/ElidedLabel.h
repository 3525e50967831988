#pragma once

#include <QLabel>

/// A line of plain text that ends in an ellipsis where it does not fit, so that a long one never widens its
/// window.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
