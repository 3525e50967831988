#pragma once

#include <QPalette>

class QLabel;

/// Colours that can be told from their ground, in the ratios of the Web Content Accessibility Guidelines:
/// from 1, the same colour, to 21, black on white.
namespace Contrast {

constexpr double text = 4.5;
constexpr double shape = 3.0; ///< edges, marks and whatever else is no text
constexpr double more = 7.0;  ///< both, where the user asks for contrast

double between(const QColor& one, const QColor& other);

/// The wish itself where it reaches the ratio on the ground, otherwise what becomes of it on its way to black
/// or white, whichever stands out more.
QColor readable(const QColor& wish, const QColor& ground, double ratio);

/// The ratio for shapes: more, where the palette is of pure black and white, as contrast themes are.
double shapeRatio(const QPalette& palette);

/// Text that stands back, on the ground of a role: between that role's own text and it.
QColor secondaryText(const QPalette& palette, QPalette::ColorRole ground);
/// Text of what is not there at the moment: weaker than any other that can be read.
QColor dimmedText(const QPalette& palette, QPalette::ColorRole ground);
/// Lets a label show secondary text, whatever palette and ground it gets.
void makeSecondary(QLabel& label);

/// What has to be replaced in a palette that a desktop brings for its texts to be readable: only those roles
/// are set in the result.
QPalette mended(const QPalette& palette);

} // namespace Contrast
