#pragma once

#include "platform/FileEventStream.h"

#include <CoreServices/CoreServices.h>

namespace Stemhaven {

/// The events of one call of a stream's callback, in the order in which they came. extendedData has one
/// dictionary an event; the flags are handed on whole, and the paths are composed (NFC).
QList<FileEvent> toFileEvents(
    std::size_t count, CFArrayRef extendedData, const FSEventStreamEventFlags* flags,
    const FSEventStreamEventId* ids);

} // namespace Stemhaven
