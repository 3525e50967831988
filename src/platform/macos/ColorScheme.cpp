#include "platform/ColorScheme.h"

#include <QGuiApplication>
#include <QPalette>

namespace Stemhaven {

ColorScheme systemColorScheme() {
    constexpr int middle = 128;
    // Qt's palette is the system's here.
    const int lightness = QGuiApplication::palette().color(QPalette::Window).lightness();
    return lightness < middle ? ColorScheme::Dark : ColorScheme::Light;
}

} // namespace Stemhaven
