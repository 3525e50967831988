#pragma once

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionHeader;
class QStyleOptionToolButton;

/// Quiet, flat controls on a grid of four pixels. Takes every colour from the palette, so it is light or dark
/// as that is.
class Style : public QProxyStyle {
    Q_OBJECT

public:
    Style();

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
    void drawComplexControl(
        ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget = nullptr) const override;
    QRect subElementRect(
        SubElement element, const QStyleOption* option, const QWidget* widget = nullptr) const override;
    QRect subControlRect(
        ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
        const QWidget* widget = nullptr) const override;
    QSize sizeFromContents(
        ContentsType type, const QStyleOption* option, const QSize& contentsSize,
        const QWidget* widget = nullptr) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr, const QWidget* widget = nullptr)
        const override;
    int styleHint(
        StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
        QStyleHintReturn* returnData = nullptr) const override;
    QIcon standardIcon(
        StandardPixmap standardIcon, const QStyleOption* option = nullptr,
        const QWidget* widget = nullptr) const override;

private:
    void drawButtonLabel(const QStyleOptionButton& option, QPainter* painter, const QWidget* widget) const;
    void
    drawComboBoxLabel(const QStyleOptionComboBox& option, QPainter* painter, const QWidget* widget) const;
    void drawHeader(const QStyleOptionHeader& option, QPainter* painter, const QWidget* widget) const;
    void drawToolButton(const QStyleOptionToolButton& option, QPainter* painter, const QWidget* widget) const;
};
