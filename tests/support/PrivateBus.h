#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryFile>

/// A session bus of the tests' own. There is one for the whole process, which keeps its first connection to a
/// session bus to its end; the environment names it only while a scope needs it.
class PrivateBus {
public:
    PrivateBus() {
        if (!address().isEmpty())
            qputenv("DBUS_SESSION_BUS_ADDRESS", address());
    }

    ~PrivateBus() { qunsetenv("DBUS_SESSION_BUS_ADDRESS"); }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// Empty when there is no dbus-daemon to start.
    static const QByteArray& address() {
        static const Daemon daemon;
        return daemon.address;
    }

private:
    struct Daemon {
        Daemon() {
            // Without the system's services, which a call would start.
            config.open();
            config.write(
                "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth>"
                "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
                "<allow eavesdrop='true'/><allow own='*'/></policy></busconfig>");
            config.close();
            process.start(
                QStringLiteral("dbus-daemon"),
                {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                 QStringLiteral("--config-file=") + config.fileName()});
            if (process.waitForStarted() && process.waitForReadyRead())
                address = process.readLine().trimmed();
        }

        ~Daemon() {
            process.kill();
            process.waitForFinished();
        }

        Daemon(const Daemon&) = delete;
        Daemon& operator=(const Daemon&) = delete;

        QTemporaryFile config;
        QProcess process;
        QByteArray address;
    };
};
