#pragma once

#include <QDebug>
#include <QString>
#include <QVariant>
#include <QtGlobal>

#include <atomic>

namespace Logging {

/// The one handler of all Qt messages: filters by level, echoes to the console, appends to a log file of
/// bounded size. Each message is one line of both: see printable(). Safe from any thread, from its
/// installation by Log's first use to the end of the process.
void handler(QtMsgType type, const QMessageLogContext& context, const QString& message);

/// What the handler works with. Paths are set during start-up, before there are other threads.
class Log {
public:
    /// The first call installs the handler.
    static Log& instance();

    /// Creates the folder when it is missing, one level deep.
    static void setDirectory(const QString& dir);
    static void setPrefix(const QString& prefix);

    /// The lowest message type, as a number, that is written.
    static void setLevel(QtMsgType level);
    static QtMsgType level();
    /// What a setting stands for; critical messages where there is none.
    static QtMsgType levelOf(const QVariant& setting);

    static void outputToConsole(bool enabled);
    static bool shouldOutputToConsole();

    static QString filepath();

    /// Bytes; a larger file is cut to its tail by the next message.
    static constexpr qint64 maxLogFileSize() { return 1'024'000; }

    /// Installs the handler again and returns the previous one.
    static QtMessageHandler installHandler();

    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

private:
    Log();
    ~Log();

    bool m_outputToConsole = true;
    std::atomic<QtMsgType> m_level = QtCriticalMsg;
    QString m_directory;
    QString m_prefix;
    QString m_filePath;
    QtMessageHandler m_previousHandler = nullptr;
};

} // namespace Logging

/// The name of a message type, for example QtInfoMsg.
QDebug operator<<(QDebug debug, QtMsgType type);
