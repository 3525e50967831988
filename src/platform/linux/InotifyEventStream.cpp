#include "platform/linux/InotifyEventStream.h"

#include "platform/linux/ClosingStreams.h"
#include "platform/linux/EventClock.h"
#include "platform/linux/WatchSession.h"

#include <QDebug>
#include <QFile>

#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace Stemhaven {

class InotifyEventStream::Worker {
public:
    Worker(const FileWatchRequest& request, Handler handler, Surroundings surroundings)
        : m_session(
              request, surroundings.calls,
              {surroundings.pollInterval, surroundings.patience, std::move(surroundings.takeSnapshot)},
              m_queue, m_isStopped),
          m_patience(surroundings.patience),
          m_handler(std::move(handler)) {}

    /// Waits until everything is watched.
    static bool start(const std::shared_ptr<Worker>& worker) {
        std::unique_lock lock(worker->m_mutex);
        if (worker->m_phase != Phase::New)
            return false;
        worker->m_phase = Phase::Starting;
        worker->m_thread = std::thread([worker] { worker->run(); });
        worker->m_phaseChange.wait(lock, [&] { return worker->m_phase != Phase::Starting; });
        return worker->m_phase == Phase::Running;
    }

    void stop() {
        std::unique_lock lock(m_mutex);
        m_isStopped = true;
        m_queue.close();
        if (m_phase == Phase::Starting || m_phase == Phase::Running)
            m_closing.emplace();
        m_phase = Phase::Stopped;
        m_phaseChange.notify_all();
        if (!m_thread.joinable() || m_thread.get_id() == std::this_thread::get_id())
            return;
        std::thread thread = std::move(m_thread);
        m_phaseChange.wait_for(lock, m_patience, [this] { return m_hasEnded; });
        // The handler uses what is gone after this, and is waited for however long it takes.
        m_phaseChange.wait(lock, [this] { return !m_isHandling; });
        const bool hasEnded = m_hasEnded;
        lock.unlock();
        if (hasEnded)
            thread.join();
        else
            thread.detach();
    }

    /// The stream is destroyed by its own handler: the thread ends alone.
    void abandon() {
        const std::lock_guard lock(m_mutex);
        if (m_thread.joinable())
            m_thread.detach();
    }

    std::uint64_t deliveredUpTo() const {
        const std::lock_guard lock(m_mutex);
        return m_deliveredUpTo;
    }

    RootState state(const QString& root) const {
        QString path = root;
        if (path.size() > 1 && path.endsWith(QLatin1Char('/')))
            path.chop(1);
        return m_session.state(QFile::encodeName(path).toStdString());
    }

private:
    enum class Phase { New, Starting, Running, Stopped };

    void run() {
        if (begin())
            loop();
        const auto deliveredUpTo = m_session.end();
        {
            const std::lock_guard lock(m_mutex);
            m_deliveredUpTo = deliveredUpTo;
            m_closing.reset();
            m_hasEnded = true;
        }
        m_phaseChange.notify_all();
    }

    bool begin() {
        bool isWatching = false;
        attempt([&] { isWatching = m_session.begin(); });
        {
            const std::lock_guard lock(m_mutex);
            if (m_phase == Phase::Starting)
                m_phase = isWatching ? Phase::Running : Phase::Stopped;
        }
        m_phaseChange.notify_all();
        return isWatching;
    }

    void loop() {
        while (!m_isStopped) {
            QList<FileEvent> batch;
            const bool isSound = attempt([&] {
                m_session.handle(m_queue.wait(m_session.deadline()));
                m_session.tick();
                batch = m_session.takeDue();
            });
            if (!isSound)
                attempt(
                    [this] { m_session.beginAnew(QStringLiteral("A file event could not be handled.")); });
            if (!batch.isEmpty())
                deliver(batch);
        }
    }

    /// The thread goes on whatever happens. Returns whether the work was done.
    template <typename Work>
    static bool attempt(const Work& work) {
        QString reason = QStringLiteral("unknown exception");
        try {
            work();
            return true;
        } catch (const std::exception& error) {
            reason = QString::fromLocal8Bit(error.what());
        } catch (...) {
        }
        qCritical() << "Following the file system failed." << reason;
        return false;
    }

    void deliver(const QList<FileEvent>& batch) {
        {
            const std::lock_guard lock(m_mutex);
            if (m_isStopped)
                return;
            m_isHandling = true;
        }
        attempt([&] { m_handler(batch); });
        {
            const std::lock_guard lock(m_mutex);
            m_isHandling = false;
        }
        m_phaseChange.notify_all();
    }

    std::atomic<bool> m_isStopped = false;
    RawEventQueue m_queue;
    WatchSession m_session;
    const std::chrono::milliseconds m_patience;
    Handler m_handler;
    mutable std::mutex m_mutex;
    std::condition_variable m_phaseChange;
    Phase m_phase = Phase::New;
    bool m_isHandling = false;
    bool m_hasEnded = false;
    std::uint64_t m_deliveredUpTo = 0;
    std::optional<ClosingStreams::Hold> m_closing;
    std::thread m_thread;
};

InotifyEventStream::InotifyEventStream(
    const FileWatchRequest& request, Handler handler, Surroundings surroundings)
    : m_worker(std::make_shared<Worker>(request, std::move(handler), std::move(surroundings))) {}

InotifyEventStream::~InotifyEventStream() {
    m_worker->stop();
    m_worker->abandon();
}

bool InotifyEventStream::start() {
    return Worker::start(m_worker);
}

void InotifyEventStream::stop() {
    m_worker->stop();
}

std::uint64_t InotifyEventStream::deliveredUpTo() const {
    return m_worker->deliveredUpTo();
}

FileEventStream::RootState InotifyEventStream::stateOf(const QString& root) const {
    return m_worker->state(root);
}

std::unique_ptr<FileEventStream> FileEventStream::create(const FileWatchRequest& request, Handler handler) {
    return std::make_unique<InotifyEventStream>(
        request, std::move(handler), InotifyEventStream::Surroundings{});
}

std::uint64_t FileEventStream::currentEventID() {
    return EventClock::instance().next();
}

bool FileEventStream::earlierStreamIsClosing() {
    return ClosingStreams::any();
}

} // namespace Stemhaven
