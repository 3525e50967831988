#include "ui/table/StarEditor.h"

#include "ui/table/AccessibleStarEditor.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <utility>

StarEditor::StarEditor(QWidget* parent) : QWidget(parent), m_rating(0) {
    setMouseTracking(true);
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setFocusPolicy(Qt::StrongFocus);
    AccessibleStarEditor::install();
    setAccessibleName(tr("Rating"));
    setToolTip(tr("Click a star, or press 0 to 5"));
}

QSize StarEditor::sizeHint() const {
    return m_rating.sizeHint(StarRating::EditMode::Editable);
}

void StarEditor::setStarRating(const StarRating& rating) {
    m_rating = rating;
    commit(rating.starCount());
    update();
}

int StarEditor::starAtPosition(int x) const {
    const int hintWidth = sizeHint().width();
    const int starWidth = hintWidth / m_rating.maxStarCount();
    const int offset = (m_rating.paintRect().width() - hintWidth) / 2;
    const int star = (x - offset) / starWidth;
    if (star < 0 || star >= m_rating.maxStarCount())
        return -1;
    return isRightToLeft() ? m_rating.maxStarCount() - star : star + 1;
}

void StarEditor::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setLayoutDirection(layoutDirection());
    m_rating.paint(&painter, rect(), palette(), StarRating::EditMode::Editable, false);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void StarEditor::mouseMoveEvent(QMouseEvent* event) {
    const int star = starAtPosition(qRound(event->position().x()));
    if (star != m_rating.starCount() && star != -1) {
        m_rating.setStarCount(star);
        update();
    }
}

void StarEditor::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    if (!rect().contains(event->position().toPoint())) {
        showCommitted();
        return;
    }
    commit(m_rating.starCount());
    emit editingFinished();
}

void StarEditor::leaveEvent(QEvent* /*event*/) {
    showCommitted();
}

void StarEditor::showCommitted() {
    m_rating = StarRating(m_committedCount);
    update();
}

void StarEditor::keyPressEvent(QKeyEvent* event) {
    const bool forwards = isRightToLeft() != (event->key() == Qt::Key_Right);
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        give(m_committedCount + (forwards ? 1 : -1));
        return;
    case Qt::Key_Up:
        give(m_committedCount + 1);
        return;
    case Qt::Key_Down:
        give(m_committedCount - 1);
        return;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        give(0);
        return;
    default:
        break;
    }
    const int digit = event->key() - Qt::Key_0;
    if (digit >= 0 && digit <= m_rating.maxStarCount())
        give(digit);
    else
        QWidget::keyPressEvent(event);
}

void StarEditor::give(int stars) {
    m_rating.setStarCount(std::clamp(stars, 0, m_rating.maxStarCount()));
    commit(m_rating.starCount());
    update();
    emit editingFinished();
}

void StarEditor::commit(int stars) {
    if (std::exchange(m_committedCount, stars) == stars)
        return;
    QAccessibleValueChangeEvent event(this, stars);
    QAccessible::updateAccessibility(&event);
}
