#pragma once

#include "platform/ColorScheme.h"

#include <QColor>
#include <QPalette>

#include <optional>

/// The program's own colours, for desktops that bring none. accent is the desktop's accent colour, which is
/// darkened where text could not be read on it. contrast: as far apart as they can be.
QPalette
designedPalette(Stemhaven::ColorScheme scheme, const std::optional<QColor>& accent, bool contrast = false);
