#pragma once

#include "platform/FileEventStream.h"

#include <QList>
#include <QString>
#include <QStringList>

/// What a test sees and steers of the system interfaces that CoreServices.h and dispatch.h beside it declare.
/// There can be one stream at a time. Objects of CoreFoundation stay to the end.
namespace MacosDouble {

enum class Fault {
    None,
    Creation,
    Start,
    /// A stream that is released keeps its context until letGo().
    ContextIsKept
};

/// Forgets everything; no stream may be left.
void reset(Fault fault = Fault::None);
void letGo();

/// The calls for streams since reset(), in order, with what is worth knowing of their arguments.
QStringList calls();

/// Calls the callback of the last stream on the calling thread, as if the call had been queued before the
/// stream was stopped; its context must still be held. What is empty or 0 is not among an event's data.
void fire(const QList<Stemhaven::FileEvent>& events);

} // namespace MacosDouble
