#pragma once

namespace Stemhaven {

/// Whether the user has asked the desktop for more contrast; not, where it does not say. Asks the desktop
/// each time, for at most a fraction of a second.
bool systemWantsContrast();

} // namespace Stemhaven
