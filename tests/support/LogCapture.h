#pragma once

#include <QStringList>
#include <QtGlobal>

#include <mutex>

/// Collects the Qt messages of all threads while it lives, instead of printing them. One at a time.
class LogCapture {
public:
    LogCapture() {
        {
            const std::lock_guard lock(mutex());
            active() = this;
        }
        m_previous = qInstallMessageHandler(&LogCapture::collect);
    }

    ~LogCapture() {
        qInstallMessageHandler(m_previous);
        // A thread may be in the handler still.
        const std::lock_guard lock(mutex());
        active() = nullptr;
    }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Each message after its type's letter: D, W, C, F or I, and a colon.
    QStringList messages() const {
        const std::lock_guard lock(mutex());
        return m_messages;
    }

    int count(const QString& part) const {
        const std::lock_guard lock(mutex());
        return static_cast<int>(m_messages.filter(part).size());
    }

private:
    static std::mutex& mutex() {
        static std::mutex only;
        return only;
    }

    static LogCapture*& active() {
        static LogCapture* capture = nullptr;
        return capture;
    }

    static void collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
        const std::lock_guard lock(mutex());
        if (LogCapture* capture = active())
            capture->m_messages.append(QLatin1Char("DWCFI"[type]) + QLatin1String(": ") + message);
    }

    QStringList m_messages;
    QtMessageHandler m_previous = nullptr;
};
