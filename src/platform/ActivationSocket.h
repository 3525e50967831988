#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <memory>

class QSocketNotifier;

namespace Stemhaven {

/// Where a second start of the program asks the first one to bring its window forward: a socket in the
/// profile's folder, to which only the user may connect.
class ActivationSocket : public QObject {
    Q_OBJECT

public:
    /// Takes the place of what another process left at the path, so only who has locked the profile may make
    /// one. Where there can be no socket, that is logged, and no request arrives.
    explicit ActivationSocket(const QString& path, QObject* parent = nullptr);
    /// Removes the socket.
    ~ActivationSocket() override;
    Q_DISABLE_COPY_MOVE(ActivationSocket)

    /// Asks who listens at the path and waits for the answer. False when nobody listens or no answer comes in
    /// time. The token is what the desktop gave this process for taking the focus; it may be empty.
    static bool
    request(const QString& path, const QByteArray& activationToken, std::chrono::milliseconds timeout);

signals:
    /// On the thread that made the object. The request is answered once all slots have returned.
    void activationRequested(const QByteArray& activationToken);

private:
    class Request;

    void acceptRequest();

    QString m_path;
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace Stemhaven
