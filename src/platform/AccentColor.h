#pragma once

#include <QColor>

#include <optional>

namespace Stemhaven {

/// The desktop's accent colour, opaque; nothing where the desktop has none. Asks the desktop each time, for
/// at most a fraction of a second.
std::optional<QColor> systemAccentColor();

} // namespace Stemhaven
