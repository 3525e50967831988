#include "ui/widgets/ElidedLabel.h"

#include "ui/widgets/ElidedTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
    m_elideMode = mode;
    update();
}

void ElidedLabel::setTextOrder(TextOrder order) {
    m_textOrder = order;
    update();
}

QSize ElidedLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth(), fontMetrics().height()).grownBy(contentsMargins());
}

bool ElidedLabel::event(QEvent* event) {
    const bool isElided = fontMetrics().horizontalAdvance(text()) > contentsRect().width();
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty() || !isElided)
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), wrappingTip(text()), this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRect place = contentsRect();
    const QString shown = isolated(
        fontMetrics().elidedText(text(), m_elideMode, place.width()), layoutDirection(), m_textOrder);
    painter.setLayoutDirection(layoutDirection());
    style()->drawItemText(
        &painter, place, static_cast<int>(alignment()), palette(), isEnabled(), shown, foregroundRole());
}
