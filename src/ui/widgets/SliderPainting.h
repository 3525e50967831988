#pragma once

#include <QStyle>

class QFontMetrics;
class QPainter;
class QStyleOptionProgressBar;
class QStyleOptionSlider;

/// What slides: the places and looks of scroll bars and sliders.
namespace SliderPainting {

/// Of what can be clicked; what is painted of the handle is thinner.
constexpr int scrollBarExtent = 24;
/// The handle with the room for its halo, which grow with the text beside the slider.
int handleSide(const QFontMetrics& text);
int sliderThickness(const QFontMetrics& text);

/// The parts of a scroll bar, which has no buttons at its ends: together they cover it.
QRect scrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part);
/// ground is what lies below the bar.
void drawScrollBar(const QStyleOptionSlider& option, const QColor& ground, QPainter* painter);

QRect sliderPart(const QStyleOptionSlider& option, QStyle::SubControl part);
void drawSlider(const QStyleOptionSlider& option, QPainter* painter);

/// A groove that is filled so far; lies on its side, and shows no text. Without a range a part of it moves
/// along, in step with the time, whenever it is painted.
void drawProgress(const QStyleOptionProgressBar& option, QPainter* painter);

} // namespace SliderPainting
