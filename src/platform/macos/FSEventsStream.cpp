#include "platform/FileEventStream.h"
#include "platform/macos/CFConversion.h"
#include "platform/macos/EventSink.h"
#include "platform/macos/EventTranslation.h"

#include <QFileInfo>

#include <CoreServices/CoreServices.h>
#include <dispatch/dispatch.h>
#include <mutex>
#include <utility>

namespace Stemhaven {

namespace {

static_assert(FileWatchRequest::sinceNow == kFSEventStreamEventIdSinceNow);

constexpr FSEventStreamCreateFlags createFlags = kFSEventStreamCreateFlagUseCFTypes |
    kFSEventStreamCreateFlagNoDefer | kFSEventStreamCreateFlagFileEvents |
    kFSEventStreamCreateFlagUseExtendedData | kFSEventStreamCreateFlagFullHistory |
    kFSEventStreamCreateWithDocID;
static_assert(createFlags == 467);

void eventStreamCallback(
    ConstFSEventStreamRef /*stream*/, void* info, std::size_t numEvents, void* eventPaths,
    const FSEventStreamEventFlags flags[], const FSEventStreamEventId ids[]) noexcept {
    // The handler may stop the stream, upon which the system may let go of the sink.
    const auto sink = static_cast<EventSink*>(info)->share();
    const auto events = toFileEvents(numEvents, static_cast<CFArrayRef>(eventPaths), flags, ids);
    if (!events.isEmpty())
        sink->deliver(events);
}

/// Null when the system refuses.
FSEventStreamRef createStream(const FileWatchRequest& request, EventSink& sink) {
    FSEventStreamContext context{
        0, &sink, &EventSink::retainForSystem, &EventSink::releaseForSystem, nullptr};
    const auto paths = toCFArray(request.roots + request.ancestors);
    const std::chrono::duration<CFTimeInterval> latency = request.latency;
    return FSEventStreamCreate(
        nullptr, &eventStreamCallback, &context, paths.get(), request.sinceEventID, latency.count(),
        createFlags);
}

void shutDown(FSEventStreamRef stream) {
    FSEventStreamStop(stream);
    FSEventStreamSetDispatchQueue(stream, nullptr);
    FSEventStreamInvalidate(stream);
    FSEventStreamRelease(stream);
}

/// The stream of macOS. It may be destroyed by its own handler.
class FSEventsStream : public FileEventStream {
public:
    FSEventsStream(FileWatchRequest request, Handler handler)
        : m_request(std::move(request)),
          m_sink(EventSink::create(std::move(handler))) {}

    ~FSEventsStream() override { close(); }

    FSEventsStream(const FSEventsStream&) = delete;
    FSEventsStream& operator=(const FSEventsStream&) = delete;

    bool start() override {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_isSpent, true))
            return false;
        const bool hasNothingToWatch = m_request.roots.isEmpty() && m_request.ancestors.isEmpty();
        if (hasNothingToWatch || earlierStreamIsClosing())
            return false;
        FSEventStreamRef stream = createStream(m_request, *m_sink);
        if (stream == nullptr)
            return false;
        FSEventStreamSetDispatchQueue(stream, dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0));
        if (!FSEventStreamStart(stream)) {
            // Only a stream that runs may be stopped, and only one that has a queue be invalidated.
            FSEventStreamInvalidate(stream);
            FSEventStreamRelease(stream);
            return false;
        }
        m_stream = stream;
        return true;
    }

    void stop() override { close(); }

    RootState stateOf(const QString& root) const override {
        const std::lock_guard lock(m_mutex);
        return m_stream != nullptr && QFileInfo::exists(root) ? RootState::Watched : RootState::Missing;
    }

private:
    void close() {
        FSEventStreamRef stream = nullptr;
        {
            const std::lock_guard lock(m_mutex);
            m_isSpent = true;
            stream = std::exchange(m_stream, nullptr);
        }
        m_sink->close();
        if (stream != nullptr)
            shutDown(stream);
        m_sink->waitUntilIdle();
    }

    const FileWatchRequest m_request;
    const EventSink::Owner m_sink;
    mutable std::mutex m_mutex;
    /// Started or stopped once: it cannot be started any more.
    bool m_isSpent = false;
    FSEventStreamRef m_stream = nullptr;
};

} // namespace

std::unique_ptr<FileEventStream> FileEventStream::create(const FileWatchRequest& request, Handler handler) {
    return std::make_unique<FSEventsStream>(request, std::move(handler));
}

bool FileEventStream::earlierStreamIsClosing() {
    return EventSink::anyHeldBySystem();
}

std::uint64_t FileEventStream::currentEventID() {
    return FSEventsGetCurrentEventId();
}

} // namespace Stemhaven
