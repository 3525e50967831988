#include "ui/widgets/MessageIcon.h"

#include "ui/widgets/GlyphEngine.h"

#include <QFont>
#include <QGuiApplication>

QIcon messageIcon(QStyle::StandardPixmap which) {
    QString sign;
    if (which == QStyle::SP_MessageBoxQuestion)
        sign = QStringLiteral("?");
    else if (which == QStyle::SP_MessageBoxInformation)
        sign = QStringLiteral("i");
    else if (which == QStyle::SP_MessageBoxWarning || which == QStyle::SP_MessageBoxCritical)
        sign = QStringLiteral("!");
    else
        return {};

    constexpr QRectF cell(0, 0, 40, 40);
    constexpr QRectF outside(2, 2, 36, 36);
    constexpr double ringWidth = 1.5;
    QFont font = QGuiApplication::font();
    font.setPixelSize(24);
    QPainterPath letter;
    letter.addText(0, 0, font, sign);
    letter.translate(cell.center() - letter.boundingRect().center());

    QPainterPath outline;
    outline.addEllipse(outside);
    outline.addEllipse(outside.adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth));
    outline.addPath(letter);
    return QIcon(new GlyphEngine(outline, cell));
}
