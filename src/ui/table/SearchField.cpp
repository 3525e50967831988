#include "ui/table/SearchField.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int lensDiameter = 9;
constexpr int lensMargin = 12;
constexpr int smallestTarget = 24;

} // namespace

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(tr("Search Projects"));
    setAccessibleName(tr("Search Projects"));
    setClearButtonEnabled(true);
    const int room = lensMargin + lensDiameter;
    setTextMargins(isRightToLeft() ? 0 : room, 0, isRightToLeft() ? room : 0, 0);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down)
        emit downPressed();
    else if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

void SearchField::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    // The button that empties the field, which the base class makes little larger than its icon.
    if (auto* button = findChild<QAbstractButton*>()) {
        QRect place = QRect({}, button->size().expandedTo({smallestTarget, smallestTarget}));
        place.moveCenter(button->geometry().center());
        button->setGeometry(place);
    }
}

void SearchField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5, Qt::SolidLine, Qt::RoundCap));
    const double left = isRightToLeft() ? width() - lensMargin - lensDiameter - 4 : lensMargin;
    const QRectF lens(left, (height() - lensDiameter) / 2.0 - 1, lensDiameter, lensDiameter);
    painter.drawEllipse(lens);
    const QPointF handle = lens.center() + QPointF(1, 1) * (lensDiameter * 0.36);
    painter.drawLine(handle, handle + QPointF(4, 4));
}
