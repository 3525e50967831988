#include "platform/TerminationSignals.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace Stemhaven {

namespace {

/// Carries the news of a signal from its handler, which may do next to nothing, to the event loop. Never
/// closed: a handler that still runs on another thread must not write to a descriptor that means something
/// else by then.
class SignalPipe {
public:
    static const SignalPipe& instance() {
        static const SignalPipe pipe;
        return pipe;
    }

    int readEnd() const { return m_ends[0]; }

    int writeEnd() const { return m_ends[1]; }

    void drain() const {
        std::array<char, 64> bytes = {};
        while (read(readEnd(), bytes.data(), bytes.size()) > 0) {
        }
    }

private:
    SignalPipe() {
        if (pipe(m_ends.data()) != 0)
            throw std::system_error(errno, std::generic_category(), "pipe() failed!");
        for (const int end : m_ends) {
            fcntl(end, F_SETFD, FD_CLOEXEC);
            fcntl(end, F_SETFL, O_NONBLOCK);
        }
    }

    std::array<int, 2> m_ends = {};
};

extern "C" void tellEventLoop(int /*signal*/) {
    const int interrupted = errno;
    const char byte = 0;
    // A full pipe has told the event loop already.
    [[maybe_unused]] const ssize_t written = write(SignalPipe::instance().writeEnd(), &byte, sizeof byte);
    errno = interrupted;
}

} // namespace

struct TerminationSignals::PreviousActions {
    struct sigaction interrupt = {};
    struct sigaction terminate = {};
};

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent),
      m_previous(std::make_unique<PreviousActions>()) {
    // Made here, before a handler can ask for it.
    const SignalPipe& pipe = SignalPipe::instance();
    pipe.drain();

    auto* notifier = new QSocketNotifier(pipe.readEnd(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, &pipe] {
        pipe.drain();
        emit terminationRequested();
    });

    struct sigaction action = {};
    action.sa_handler = tellEventLoop;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &m_previous->interrupt);
    sigaction(SIGTERM, &action, &m_previous->terminate);
}

TerminationSignals::~TerminationSignals() {
    sigaction(SIGINT, &m_previous->interrupt, nullptr);
    sigaction(SIGTERM, &m_previous->terminate, nullptr);
}

} // namespace Stemhaven
