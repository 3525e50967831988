#pragma once

#include "ui/widgets/TextOrder.h"

#include <QLabel>

/// A line of plain text with an ellipsis, at its end unless it is told otherwise, where it does not fit, so
/// that a long one never widens its window. Its tool tip, unless it is given another, is then the whole of
/// it.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    void setElideMode(Qt::TextElideMode mode);
    void setTextOrder(TextOrder order);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
    TextOrder m_textOrder = TextOrder::OfTheWindow;
};
