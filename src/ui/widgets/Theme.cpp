#include "ui/widgets/Theme.h"

#include "platform/AccentColor.h"
#include "ui/widgets/DesktopAppearance.h"
#include "ui/widgets/Style.h"

#include <QApplication>
#include <QStyleFactory>

#include <algorithm>
#include <memory>

namespace {

/// Without colours from the desktop the application has those of Qt's own fall-back style.
bool desktopBringsColors() {
    const std::unique_ptr<QStyle> fallBack(QStyleFactory::create(QStringLiteral("Fusion")));
    const QPalette own = QApplication::palette();
    const QPalette fallBackPalette = fallBack->standardPalette();
    const auto roles = {QPalette::Window, QPalette::Base, QPalette::Text, QPalette::Button};
    return std::any_of(roles.begin(), roles.end(), [&](auto role) {
        return own.color(role) != fallBackPalette.color(role);
    });
}

} // namespace

Theme::Theme(QObject* parent) : QObject(parent) {
    const bool needsColors = !desktopBringsColors();
    QApplication::setStyle(new Style);
    if (!needsColors)
        return;
    m_appearance = new DesktopAppearance(this);
    connect(m_appearance, &DesktopAppearance::changed, this, &Theme::applyPalette);
    applyPalette();
}

void Theme::applyPalette() {
    QApplication::setPalette(
        designedPalette(DesktopAppearance::colorScheme(), Stemhaven::systemAccentColor()));
}
