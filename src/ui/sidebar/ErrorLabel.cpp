#include "ui/sidebar/ErrorLabel.h"

#include "ui/widgets/AccessibleRole.h"

#include <QEvent>

namespace {

constexpr QRgb redOnLight = 0xFFB3202C;
constexpr QRgb redOnDark = 0xFFFF8A80;

} // namespace

ErrorLabel::ErrorLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAccessibleRole(*this, QAccessible::AlertMessage);
    setMinimumHeight(fontMetrics().height());
    applyColor();
}

void ErrorLabel::showError(const QString& error) {
    if (error == text())
        return;
    setText(error);
    announce(*this, error);
}

void ErrorLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColor();
}

void ErrorLabel::applyColor() {
    const QColor red(palette().color(QPalette::Window).lightness() < 128 ? redOnDark : redOnLight);
    if (palette().color(QPalette::WindowText) == red)
        return;
    QPalette colors;
    colors.setColor(QPalette::WindowText, red);
    setPalette(colors);
}
