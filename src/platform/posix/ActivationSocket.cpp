#include "platform/ActivationSocket.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace Stemhaven {

namespace {

// A request is an activation token and the end of the stream; its answer is this byte.
constexpr char answer = '+';
constexpr qsizetype longestToken = 4'096;

/// A descriptor that is closed with its scope.
class Descriptor {
public:
    explicit Descriptor(int number) : m_number(number) {}

    ~Descriptor() {
        if (m_number >= 0)
            close(m_number);
    }

    Q_DISABLE_COPY_MOVE(Descriptor)

    int number() const { return m_number; }

private:
    int m_number;
};

/// An address has room for some hundred bytes only. A longer path goes through a descriptor of its folder,
/// where the system has names for descriptors; elsewhere the address is not to be found.
class Address {
public:
    explicit Address(const QString& path)
        : m_folder(open(
              QFile::encodeName(QFileInfo(path).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        QByteArray name = QFile::encodeName(path);
        if (static_cast<std::size_t>(name.size()) >= sizeof m_address.sun_path)
            name = "/proc/self/fd/" + QByteArray::number(m_folder.number()) + '/' +
                QFile::encodeName(QFileInfo(path).fileName());
        m_address.sun_family = AF_UNIX;
        qstrncpy(m_address.sun_path, name.constData(), sizeof m_address.sun_path);
    }

    bool bindTo(int socket) const { return bind(socket, generic(), sizeof m_address) == 0; }

    bool connectTo(int socket) const { return connect(socket, generic(), sizeof m_address) == 0; }

private:
    const sockaddr* generic() const { return reinterpret_cast<const sockaddr*>(&m_address); }

    Descriptor m_folder;
    sockaddr_un m_address = {};
};

/// Never waits, is not inherited by child processes, and sends no signal when the other end is gone.
int prepared(int socket) {
    if (socket < 0)
        return socket;
    fcntl(socket, F_SETFD, FD_CLOEXEC);
    fcntl(socket, F_SETFL, O_NONBLOCK);
#ifdef SO_NOSIGPIPE
    const int on = 1;
    setsockopt(socket, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
    return socket;
}

int newSocket() {
    return prepared(socket(AF_UNIX, SOCK_STREAM, 0));
}

bool sendAll(int socket, const char* bytes, qsizetype count) {
#ifdef MSG_NOSIGNAL
    constexpr int flags = MSG_NOSIGNAL;
#else
    constexpr int flags = 0;
#endif
    // So little goes into the socket's memory at once.
    return send(socket, bytes, static_cast<std::size_t>(count), flags) == count;
}

bool waitForInput(int socket, const QDeadlineTimer& deadline) {
    pollfd input = {socket, POLLIN, 0};
    for (;;) {
        const int ready = poll(&input, 1, static_cast<int>(deadline.remainingTime()));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

} // namespace

/// One process that has connected.
class ActivationSocket::Request : public QObject {
public:
    Request(int descriptor, ActivationSocket* listener)
        : QObject(listener),
          m_descriptor(descriptor),
          m_listener(listener),
          m_notifier(descriptor, QSocketNotifier::Read) {
        connect(&m_notifier, &QSocketNotifier::activated, this, &Request::receive);
    }

private:
    void receive() {
        std::array<char, 1'024> bytes = {};
        const ssize_t count = recv(m_descriptor.number(), bytes.data(), bytes.size(), 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (count > 0)
            m_token.append(bytes.data(), count);
        if (count > 0 && m_token.size() <= longestToken)
            return;
        m_notifier.setEnabled(false);
        if (count == 0) {
            emit m_listener->activationRequested(m_token);
            sendAll(m_descriptor.number(), &answer, sizeof answer);
        }
        deleteLater();
    }

    // The notifier goes before the descriptor that it watches.
    Descriptor m_descriptor;
    ActivationSocket* m_listener;
    QSocketNotifier m_notifier;
    QByteArray m_token;
};

ActivationSocket::ActivationSocket(const QString& path, QObject* parent)
    : QObject(parent),
      m_path(path),
      m_descriptor(newSocket()) {
    constexpr int waitingRequests = 16;
    const QByteArray name = QFile::encodeName(path);
    unlink(name.constData());
    // Nobody can connect before listen(), so no other user does before the mode is set.
    const bool listens = Address(path).bindTo(m_descriptor) &&
        chmod(name.constData(), S_IRUSR | S_IWUSR) == 0 && listen(m_descriptor, waitingRequests) == 0;
    if (!listens) {
        const QString reason = qt_error_string(errno);
        qCritical() << "Could not listen at " << path << ": " << reason
                    << ". A second start of the program will not bring the window forward.";
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &ActivationSocket::acceptRequest);
}

ActivationSocket::~ActivationSocket() {
    unlink(QFile::encodeName(m_path).constData());
    // The notifier goes before the descriptor that it watches.
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

bool ActivationSocket::request(
    const QString& path, const QByteArray& activationToken, std::chrono::milliseconds timeout) {
    const QDeadlineTimer deadline(timeout);
    const Descriptor connection(newSocket());
    if (!Address(path).connectTo(connection.number()))
        return false;
    if (!activationToken.isEmpty() &&
        !sendAll(connection.number(), activationToken.constData(), activationToken.size()))
        return false;
    shutdown(connection.number(), SHUT_WR);
    char received = 0;
    return waitForInput(connection.number(), deadline) &&
        recv(connection.number(), &received, sizeof received, 0) == sizeof received && received == answer;
}

void ActivationSocket::acceptRequest() {
    const int descriptor = prepared(accept(m_descriptor, nullptr, nullptr));
    if (descriptor >= 0)
        new Request(descriptor, this);
}

} // namespace Stemhaven
