#pragma once

#include "platform/FileEventStream.h"
#include "platform/linux/InotifyCalls.h"
#include "platform/linux/TreeSnapshot.h"

#include <chrono>
#include <memory>

namespace Stemhaven {

/// The stream of Linux: inotify where the system tells events, a look every few seconds where it does not.
///
/// One thread drains the descriptor; a second one keeps the watches, looks at the local disks and calls the
/// handler; each polled folder has one of its own.
class InotifyEventStream : public FileEventStream {
public:
    struct Surroundings {
        InotifyCalls& calls = InotifyCalls::system();
        std::chrono::milliseconds pollInterval{5000};
        /// How long stop() waits for a file system that does not answer. The thread is left behind then, and
        /// the stream counts as closing until it ends. Polled folders, to which all remote ones belong, are
        /// not waited for; one that does not answer for that long counts as missing.
        std::chrono::milliseconds patience{5000};
        /// How a polled folder is read.
        TreeSnapshot::Taker takeSnapshot = &TreeSnapshot::take;
    };

    InotifyEventStream(const FileWatchRequest& request, Handler handler, Surroundings surroundings);
    /// May be called from the handler.
    ~InotifyEventStream() override;
    InotifyEventStream(const InotifyEventStream&) = delete;
    InotifyEventStream& operator=(const InotifyEventStream&) = delete;

    bool start() override;
    void stop() override;
    std::uint64_t deliveredUpTo() const override;
    RootState stateOf(const QString& root) const override;

private:
    class Worker;

    /// The thread holds it as well: it outlives a stream that is destroyed by its own handler.
    std::shared_ptr<Worker> m_worker;
};

} // namespace Stemhaven
