#pragma once

#include <QColor>
#include <QRectF>
#include <QStyleOption>

class QPainter;

/// How the parts of controls look. Every colour comes from the palette of what is drawn.
namespace ControlPainting {

constexpr double radius = 6.0;      ///< of whatever has the size of a button
constexpr double smallRadius = 4.0; ///< of rows and of smaller things
constexpr int haloWidth = 2;        ///< around small things that have the focus
constexpr int controlHeight = 32;
constexpr int rowHeight = 28;

/// The side of a square icon or mark beside a text, which it grows with.
int iconSide(const QFontMetrics& text);

/// The colour that lies between two.
QColor mixed(const QColor& from, const QColor& to, float share);
/// Dividing lines and the edges of what is no control.
QColor lineColor(const QPalette& palette);
/// Edges of controls.
QColor edgeColor(const QPalette& palette);
/// The one colour that stands out, whatever state the window is in.
QColor accentColor(const QPalette& palette);
/// The same for a shape on the ground of the window.
QColor accentShape(const QPalette& palette);
/// fill as it looks under the mouse, pressed, or at rest.
QColor touched(const QColor& fill, const QStyleOption& option);

bool isEnabled(const QStyleOption& option);
bool hasFocus(const QStyleOption& option);

void drawBox(
    QPainter* painter, const QRectF& rect, const QColor& fill, const QColor& line, double lineWidth,
    double cornerRadius = radius);
/// A box without a line.
void fillBox(QPainter* painter, const QRectF& rect, const QColor& fill, double cornerRadius = radius);
/// One unit wide, along the middle of a rectangle's longer side.
void drawDivider(QPainter* painter, const QRect& rect, const QColor& color);
void drawFocusRing(QPainter* painter, const QRectF& rect, const QPalette& palette, double cornerRadius);
/// The focus of small things: goes below them and reaches out by haloWidth.
void drawHalo(QPainter* painter, const QRectF& around, const QPalette& palette, double cornerRadius);

/// A chevron of 8 by 4 units.
void drawChevron(QPainter* painter, const QRect& rect, Qt::ArrowType direction, const QColor& color);
/// The mark of something chosen, as large as the place allows.
void drawCheckMark(QPainter* painter, const QRectF& rect, const QColor& color);
/// The mark of something that is chosen in part.
void drawPartialMark(QPainter* painter, const QRectF& rect, const QColor& color);

void drawLineEdit(const QStyleOption& option, QPainter* painter);
/// Whether it is the button of a dialog that Return presses.
bool isProminent(const QStyleOption& option);
void drawButton(const QStyleOption& option, QPainter* painter);
/// These two fill option's rectangle but for the width of a halo.
void drawCheckBox(const QStyleOption& option, QPainter* painter);
void drawRadioButton(const QStyleOption& option, QPainter* painter);
void drawComboBox(const QStyleOption& option, const QRect& arrow, QPainter* painter);
/// A flat button: nothing but its ground, and that only when it is touched, checked or in focus.
void drawToolButton(const QStyleOption& option, QPainter* painter);
/// The ground of a window that floats: a menu or a tool tip.
void drawPanel(const QStyleOption& option, const QColor& fill, QPainter* painter);

} // namespace ControlPainting
