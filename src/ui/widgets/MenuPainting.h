#pragma once

#include <QSize>

class QPainter;
class QStyleOptionMenuItem;

/// The rows of menus and the titles in the menu bar.
namespace MenuPainting {

/// Of a row whose text alone has the size text.
QSize itemSize(const QStyleOptionMenuItem& option, const QSize& text);
void drawItem(const QStyleOptionMenuItem& option, QPainter* painter);

QSize titleSize(const QSize& text);
void drawTitle(const QStyleOptionMenuItem& option, QPainter* painter);

} // namespace MenuPainting
