#pragma once

#include <QStyle>

/// The rows of lists and trees: the one under the mouse and the selected ones are rounded, and chevrons
/// without lines open the rows of a tree. Tables, whose rows go from edge to edge, are left to the style
/// below.
namespace ItemViewPainting {

/// Returns whether the element is a part of such a view, and drawn.
bool drawPart(
    QStyle::PrimitiveElement element, const QStyleOption& option, const QWidget* view, QPainter* painter);

} // namespace ItemViewPainting
