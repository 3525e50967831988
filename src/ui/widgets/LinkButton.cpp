#include "ui/widgets/LinkButton.h"

#include "ui/widgets/AccentColor.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/ControlPainting.h"

#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int sideMargin = 4;
constexpr int lineMargin = 2;

} // namespace

LinkButton::LinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setCursor(Qt::PointingHandCursor);
    // The mouse leaves the keyboard where it is.
    setFocusPolicy(Qt::TabFocus);
}

QSize LinkButton::sizeHint() const {
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return text + QSize(2 * sideMargin, 2 * lineMargin);
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QFont underlined = font();
    underlined.setUnderline(true);
    painter.setFont(underlined);
    painter.setPen(Contrast::readable(getAccentColor(), palette().color(QPalette::Window), Contrast::text));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, text());
    if (hasFocus())
        ControlPainting::drawFocusRing(&painter, rect(), palette(), ControlPainting::smallRadius);
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}
