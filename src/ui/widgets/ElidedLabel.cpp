#include "ui/widgets/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
    m_elideMode = mode;
    update();
}

QSize ElidedLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth(), fontMetrics().height()).grownBy(contentsMargins());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect place = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), m_elideMode, place.width());
    style()->drawItemText(
        &painter, place, static_cast<int>(alignment()), palette(), isEnabled(), shown, foregroundRole());
}
