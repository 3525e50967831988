#pragma once

namespace Stemhaven {

enum class ColorScheme { Light, Dark };

/// Whether the desktop wants programs light or dark; light where it does not say. Asks the desktop each time,
/// for at most a fraction of a second.
ColorScheme systemColorScheme();

} // namespace Stemhaven
