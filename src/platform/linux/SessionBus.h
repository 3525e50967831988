#pragma once

namespace Stemhaven {

/// Whether a session bus can be reached. Asking for a connection without one would start a bus for it.
bool hasSessionBus();

} // namespace Stemhaven
