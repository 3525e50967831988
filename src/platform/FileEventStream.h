#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

namespace Stemhaven {

/// One thing that happened to one path.
struct FileEvent {
    enum Flag : std::uint32_t {
        MustScanSubDirs = 0x1,
        /// A volume was mounted or unmounted at path, below a watched folder.
        Mount = 0x40,
        Unmount = 0x80,
        ItemCreated = 0x100,
        ItemRemoved = 0x200,
        ItemRenamed = 0x800,
        ItemModified = 0x1000
    };

    /// Absolute, without a trailing "/".
    QString path;
    /// The inode, 0 where it is not known.
    std::uint64_t fileID = 0;
    std::uint64_t docID = 0;
    std::uint32_t flags = 0;
    std::uint64_t eventID = 0;
};

/// What a stream is to watch, and since when.
struct FileWatchRequest {
    static constexpr std::uint64_t sinceNow = std::numeric_limits<std::uint64_t>::max();

    /// Watched with all that is below them.
    QStringList roots;
    /// Folders above projects that lie below no root: only the folders themselves.
    QStringList ancestors;
    /// Projects that lie below no root.
    QStringList strayBundles;
    /// What the names of bundles end in.
    QStringList bundleSuffixes;
    /// Events after this one are replayed.
    std::uint64_t sinceEventID = sinceNow;

    /// What is on record of a bundle.
    struct RecordedTimes {
        /// When its information file had last been changed, in seconds since 1970.
        std::int64_t informationSeconds = 0;
        /// When it was read, in nanoseconds since 1970.
        std::int64_t readAt = 0;
    };

    /// Nothing for a bundle that is not on record. A bundle that was read after its last change is not
    /// replayed, and one whose information file has another time now is, so that a save is not missed for
    /// which the clock was set back. Safe from any thread. Of no use to a system that keeps a history of its
    /// events.
    std::function<std::optional<RecordedTimes>(const QString& bundlePath)> recordedTimes;
    /// How long events are gathered before they are delivered together.
    std::chrono::milliseconds latency{3000};
};

/// The events of the file system below some folders.
///
/// Told is what can change the record of a bundle, with the path of the part, and what happens to folders
/// outside bundles; other files outside bundles are passed over. Both halves of a move have the same fileID.
/// A bundle that comes from out of sight, or that was no bundle before, is created as well as renamed.
/// MustScanSubDirs comes at the path of a root, or of a remote file system that is mounted inside one: what
/// lies below may have changed without being told.
class FileEventStream {
public:
    /// Called on the stream's own thread, which holds no lock of the stream. A batch is never empty; its
    /// events are in the order of their ids.
    using Handler = std::function<void(const QList<FileEvent>&)>;

    /// The stream of this system, not started.
    static std::unique_ptr<FileEventStream> create(const FileWatchRequest& request, Handler handler);

    FileEventStream() = default;
    virtual ~FileEventStream() = default;
    FileEventStream(const FileEventStream&) = delete;
    FileEventStream& operator=(const FileEventStream&) = delete;

    /// Returns once nothing that happens from now on is missed, or false when the system refuses or the
    /// stream was stopped meanwhile. Reads every local folder first, so not for the GUI thread, but never
    /// waits for the handler, nor for a remote file system: what changes there before the first look at it is
    /// found by its time. Can be started once.
    virtual bool start() = 0;
    /// After it the handler is not called any more: waits for a call that is under way, so the caller must
    /// hold nothing that the handler waits for. Called from the handler, it does not wait. Safe from any
    /// thread.
    virtual void stop() = 0;

    /// After stop(): an id up to which everything has been delivered, so that the next stream need not replay
    /// it. 0 where that is not known.
    virtual std::uint64_t deliveredUpTo() const { return 0; }

    /// Whether a stream that was stopped earlier still holds what a new one needs.
    static bool earlierStreamIsClosing();

    /// An id that stands for the present: everything that happens from now on has a greater one.
    static std::uint64_t currentEventID();

    /// Missing until start().
    /// Missing also while a remote file system does not answer.
    enum class RootState { Watched, Polled, Missing };
    /// Safe from any thread. The root may end in "/".
    virtual RootState stateOf(const QString& root) const = 0;
};

} // namespace Stemhaven
