#pragma once

#include <QBrush>

class QPalette;

/// What the marks in the table's cells are painted with: the accent colour, or on a selected row the colour
/// of its text.
QBrush cellBrush(const QPalette& palette, bool selected);

/// The same for the outlines of what could be there, such as stars that were not given: quieter, but still a
/// shape that can be told from its ground.
QBrush outlineBrush(const QPalette& palette, bool selected);

/// The same for the whole length of a bar, below the part that is filled.
QBrush trackBrush(const QPalette& palette, bool selected);
