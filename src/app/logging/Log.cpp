#include "app/logging/Log.h"

#include "app/logging/PrintableText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <mutex>

namespace Logging {

namespace {

constexpr qint64 keptTailSize = 1'024;

struct HandlerState {
    std::mutex mutex;
    bool logIsGone = false;
};

HandlerState& handlerState() {
    // Never destroyed: messages come until the very end of the process.
    static const auto only = std::ref(*new HandlerState);
    return only;
}

const char* tag(QtMsgType type) {
    switch (type) {
    case QtDebugMsg:
        return "(DEBUG): ";
    case QtWarningMsg:
        return "(WARNING): ";
    case QtCriticalMsg:
        return "(CRITICAL): ";
    case QtFatalMsg:
        return "(FATAL): ";
    case QtInfoMsg:
        return "(INFO): ";
    }
    return "(UNKNOWN): ";
}

void keepTail(QFile& file) {
    file.seek(std::max<qint64>(0, file.size() - keptTailSize));
    const QByteArray tail = file.read(keptTailSize);
    file.seek(0);
    file.write(tail);
    file.resize(file.pos());
}

void writeToConsole(QtMsgType type, const QByteArray& line) {
    std::FILE* stream = type == QtDebugMsg || type == QtWarningMsg ? stdout : stderr;
    const QByteArray withEnd = line + '\n';
    std::fwrite(withEnd.constData(), 1, static_cast<std::size_t>(withEnd.size()), stream);
    std::fflush(stream);
}

QString withTrailingSlash(const QString& dir) {
    return dir.endsWith(u'/') ? dir : dir + u'/';
}

QString filePath(const QString& directory, const QString& prefix) {
    return directory + prefix + QStringLiteral(".log");
}

} // namespace

// Nothing here may write a Qt message: the handler would wait for itself.
void handler(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    const std::lock_guard lock(handlerState().mutex);
    if (handlerState().logIsGone) {
        writeToConsole(type, printable(message).toUtf8());
        return;
    }

    const bool isWritten = static_cast<int>(type) >= static_cast<int>(Log::level());
    const QFileInfo present(Log::filepath());
    // Most messages are below the level, and opening the file costs more than all else that they do.
    if (!isWritten && present.exists() && present.size() <= Log::maxLogFileSize())
        return;

    QFile file(present.filePath());
    if (file.open(QIODevice::ReadWrite)) {
        if (file.size() < 0 || file.size() > Log::maxLogFileSize())
            keepTail(file);
        file.close();
    }
    const bool isOpen = file.open(QIODevice::WriteOnly | QIODevice::Append);

    if (!isWritten)
        return;

    const QByteArray line =
        QDateTime::currentDateTime().toString(Qt::ISODate).toUtf8() + tag(type) + printable(message).toUtf8();
    if (Log::shouldOutputToConsole())
        writeToConsole(type, line);
    if (isOpen)
        file.write(file.size() > 0 ? '\n' + line : line);
}

Log& Log::instance() {
    static Log log;
    return log;
}

Log::Log()
    : m_directory(withTrailingSlash(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))),
      m_prefix(QCoreApplication::applicationName()),
      m_filePath(filePath(m_directory, m_prefix)),
      m_previousHandler(qInstallMessageHandler(handler)) {}

Log::~Log() {
    qInstallMessageHandler(m_previousHandler);
    const std::lock_guard lock(handlerState().mutex);
    handlerState().logIsGone = true;
}

void Log::setDirectory(const QString& dir) {
    Log& log = instance();
    log.m_directory = withTrailingSlash(dir);
    if (!QDir(dir).exists())
        QDir().mkdir(dir);
    log.m_filePath = filePath(log.m_directory, log.m_prefix);
}

void Log::setPrefix(const QString& prefix) {
    Log& log = instance();
    log.m_prefix = prefix;
    log.m_filePath = filePath(log.m_directory, log.m_prefix);
}

void Log::setLevel(QtMsgType level) {
    instance().m_level = level;
    // What the decoders of pictures say names no file, and is false of a picture that is merely given up.
    QString rules = QStringLiteral("qt.gui.imageio*.warning=false");
    // Costly to put into words, so a category of its own that its writer can ask.
    if (level <= QtDebugMsg)
        rules += QStringLiteral("\nstemhaven.events.debug=true");
    QLoggingCategory::setFilterRules(rules);
}

QtMsgType Log::levelOf(const QVariant& setting) {
    // What the type cannot hold is as good as its greatest number: nothing passes.
    constexpr int greatest = 7;
    return setting.isValid() ? static_cast<QtMsgType>(std::clamp(setting.toInt(), 0, greatest))
                             : QtCriticalMsg;
}

QtMsgType Log::level() {
    return instance().m_level;
}

void Log::outputToConsole(bool enabled) {
    Log& log = instance();
    const std::lock_guard lock(handlerState().mutex);
    log.m_outputToConsole = enabled;
}

bool Log::shouldOutputToConsole() {
    return instance().m_outputToConsole;
}

QString Log::filepath() {
    return instance().m_filePath;
}

QtMessageHandler Log::installHandler() {
    instance();
    return qInstallMessageHandler(handler);
}

} // namespace Logging

QDebug operator<<(QDebug debug, QtMsgType type) {
    switch (type) {
    case QtDebugMsg:
        return debug << "QtDebugMsg";
    case QtWarningMsg:
        return debug << "QtWarningMsg";
    case QtCriticalMsg:
        return debug << "QtCriticalMsg";
    case QtFatalMsg:
        return debug << "QtFatalMsg";
    case QtInfoMsg:
        return debug << "QtInfoMsg";
    }
    return debug << "UnknownLogLevel";
}
