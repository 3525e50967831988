#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

/// What a test sees and steers of the system interfaces that CoreServices.h and dispatch.h beside it declare.
namespace MacosDouble {

/// How the last stream was created.
struct Creation {
    QStringList paths;
    std::uint64_t sinceWhen = 0;
    double latency = 0;
    std::uint32_t flags = 0;
};

/// What is not set is not among the event's data.
struct Event {
    std::optional<QString> path;
    std::optional<std::int64_t> fileID;
    std::optional<std::int64_t> docID;
    std::uint32_t flags = 0;
    std::uint64_t id = 0;
};

/// Forgets everything; no stream may be left.
void reset();

/// The calls for streams since reset(), in order.
QStringList calls();
Creation lastCreation();

/// Objects of CoreFoundation and streams that were not released to the end.
int liveObjects();
/// The retains of contexts that are not yet released.
int heldContexts();

void failCreation();
void failStart();
void setCurrentEventID(std::uint64_t id);

/// From now on a stream that is released keeps its context until letGo().
void keepContexts();
void letGo();

/// Calls the callback of the last stream on the calling thread, as if the call had been queued before the
/// stream was stopped; its context must still be held.
void fire(const QList<Event>& events);

} // namespace MacosDouble
