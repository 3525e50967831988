#include "ui/widgets/FontIcons.h"

#include "ui/widgets/ZFontIcon.h"

#include <QDebug>
#include <QFile>

void registerFonts() {
    const QString file = QStringLiteral(":icons/Phosphor/") + QStringLiteral("Phosphor-Light.ttf");
    if (!QFile::exists(file))
        qInfo() << "Built without the icon font, buttons show text.";
    else if (!ZFontIcon::addFont(file))
        qWarning() << "The icon font cannot be read.";
}

void updateIconFontPalette(const QPalette& palette) {
    ZFontIcon::setColors(
        palette.color(QPalette::WindowText), palette.color(QPalette::Disabled, QPalette::WindowText),
        palette.color(QPalette::HighlightedText));
}
