#pragma once

#include "platform/FileEventStream.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

/// What a test sees and steers of the system interfaces that CoreServices.h and dispatch.h beside it declare.
/// There can be one stream at a time.
namespace MacosDouble {

enum class Fault {
    None,
    Creation,
    Start,
    /// A stream that is released keeps its context until letGo().
    ContextIsKept
};

constexpr std::uint64_t currentEventID = 1'234'567'890'123;

/// Forgets everything; no stream may be left.
void reset(Fault fault = Fault::None);
void letGo();

/// The calls for streams since reset(), in order, with what is worth knowing of their arguments.
QStringList calls();

/// Objects of CoreFoundation and streams that were not released to the end.
int liveObjects();
/// The retains of contexts that are not yet released.
int heldContexts();

/// Calls the callback of the last stream on the calling thread, as if the call had been queued before the
/// stream was stopped; its context must still be held. What is empty or 0 is not among an event's data.
void fire(const QList<Stemhaven::FileEvent>& events);

} // namespace MacosDouble
