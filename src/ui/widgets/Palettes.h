#pragma once

#include <QColor>
#include <QPalette>

#include <optional>

enum class ColorScheme { Light, Dark };

/// The program's own colours, for desktops that bring none. accent is the desktop's accent colour.
QPalette designedPalette(ColorScheme scheme, const std::optional<QColor>& accent);
