#include "ui/widgets/Theme.h"

#include "platform/AccentColor.h"
#include "platform/AppearanceChanges.h"
#include "platform/ColorScheme.h"
#include "platform/HighContrast.h"
#include "ui/widgets/Contrast.h"
#include "ui/widgets/FontIcons.h"
#include "ui/widgets/Palettes.h"
#include "ui/widgets/Style.h"

#include <QApplication>
#include <QEvent>
#include <QScopedValueRollback>
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

Theme::Theme(std::optional<Stemhaven::ColorScheme> scheme, QObject* parent)
    : QObject(parent),
      m_scheme(scheme) {
    const bool needsColors = scheme || !desktopBringsColors();
    QApplication::setStyle(new Style);
    // Whoever changes the palette, the icons go along.
    qApp->installEventFilter(this);
    updateIconFontPalette(QGuiApplication::palette());
    m_mendsColors = !needsColors;
    if (m_mendsColors) {
        mendPalette();
        return;
    }
    auto* changes = new Stemhaven::AppearanceChanges(this);
    connect(changes, &Stemhaven::AppearanceChanges::changed, this, &Theme::applyPalette);
    applyPalette();
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp) {
        if (m_mendsColors)
            mendPalette();
        updateIconFontPalette(QGuiApplication::palette());
    }
    return QObject::eventFilter(watched, event);
}

void Theme::applyPalette() const {
    const auto scheme = m_scheme ? *m_scheme : Stemhaven::systemColorScheme();
    QApplication::setPalette(
        designedPalette(scheme, Stemhaven::systemAccentColor(), Stemhaven::systemWantsContrast()));
}

void Theme::mendPalette() {
    const QPalette mended = Contrast::mended(QApplication::palette());
    // What is set is the program's from then on and does not follow the desktop, so it is as little as can
    // be.
    if (mended.resolveMask() == 0)
        return;
    // Its own change of the palette comes here again.
    const QScopedValueRollback once(m_mendsColors, false);
    QApplication::setPalette(mended.resolve(QApplication::palette()));
}
