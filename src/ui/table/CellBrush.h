#pragma once

#include <QBrush>

class QPalette;

/// What the marks in the table's cells are painted with: the accent colour, or on a selected row the colour
/// of its text.
QBrush cellBrush(const QPalette& palette, bool selected);
