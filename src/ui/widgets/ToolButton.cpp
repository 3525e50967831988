#include "ui/widgets/ToolButton.h"

#include <algorithm>

namespace {

constexpr int smallestIcon = 20;

} // namespace

ToolButton::ToolButton(Glyph glyph, const QString& text, QWidget* parent) : QToolButton(parent) {
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    const int side = std::max(smallestIcon, fontMetrics().height());
    setIconSize({side, side});
    present(glyph, text);
}

void ToolButton::present(Glyph glyph, const QString& text) {
    setText(text);
    setToolTip(text);
    setAccessibleName(text);
    // Without an icon the style of the button shows the text.
    setIcon(::icon(glyph));
    setToolButtonStyle(icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly);
}
