#pragma once

#include <QStyle>

class QPainter;
class QStyleOptionProgressBar;
class QStyleOptionSlider;

/// What slides: the places and looks of scroll bars and sliders.
namespace SliderPainting {

constexpr int scrollBarExtent = 12;
/// The handle with the room for its halo.
constexpr int handleSide = 20;
constexpr int sliderThickness = 24;

/// The parts of a scroll bar, which has no buttons at its ends: together they cover it.
QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);
/// ground is what lies below the bar.
void drawScrollBar(const QStyleOptionSlider& option, const QColor& ground, QPainter* painter);

QRect sliderPart(const QStyleOptionSlider& option, QStyle::SubControl part);
void drawSlider(const QStyleOptionSlider& option, QPainter* painter);

/// A groove that is filled so far; lies on its side, and shows no text.
void drawProgress(const QStyleOptionProgressBar& option, QPainter* painter);

} // namespace SliderPainting
