#include "ui/table/StarEditor.h"

#include <QMouseEvent>
#include <QPainter>

StarEditor::StarEditor(QWidget* parent) : QWidget(parent), m_rating(0) {
    setMouseTracking(true);
    setAutoFillBackground(false);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAccessibleName(tr("Rating"));
}

QSize StarEditor::sizeHint() const {
    return m_rating.sizeHint();
}

void StarEditor::setStarRating(const StarRating& rating) {
    m_rating = rating;
    m_committedCount = rating.starCount();
    update();
}

int StarEditor::starAtPosition(int x) const {
    const int hintWidth = m_rating.sizeHint().width();
    const int starWidth = hintWidth / m_rating.maxStarCount();
    const int offset = (m_rating.paintRect().width() - hintWidth) / 2;
    const int star = (x - offset) / starWidth;
    if (star < 0 || star >= m_rating.maxStarCount())
        return -1;
    return star + 1;
}

void StarEditor::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    m_rating.paint(&painter, rect(), palette(), StarRating::EditMode::Editable, false);
}

void StarEditor::mouseMoveEvent(QMouseEvent* event) {
    const int star = starAtPosition(qRound(event->position().x()));
    if (star != m_rating.starCount() && star != -1) {
        m_rating.setStarCount(star);
        update();
    }
}

void StarEditor::mouseReleaseEvent(QMouseEvent* /*event*/) {
    m_committedCount = m_rating.starCount();
    emit editingFinished();
}

void StarEditor::leaveEvent(QEvent* /*event*/) {
    m_rating = StarRating(m_committedCount);
    update();
}
