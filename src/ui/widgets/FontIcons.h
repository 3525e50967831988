#pragma once

#include <QPalette>

/// Hands the program's icon font, where it was built in, to the icons. Once, after the application object.
void registerFonts();

/// Gives all icons the colours of a palette: its text, enabled and disabled, and the text of a selection.
void updateIconFontPalette(const QPalette& palette);
