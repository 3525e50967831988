#pragma once

#include <QRect>

class QPainter;
class QStyleOption;
class QStyleOptionHeader;

/// The titles of columns.
namespace HeaderPainting {

constexpr int margin = 8;
constexpr int sortArrowSide = 12;

void drawSection(const QStyleOption& option, QPainter* painter);
void drawSortArrow(const QStyleOptionHeader& header, QPainter* painter);

} // namespace HeaderPainting
