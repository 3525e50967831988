#pragma once

#include <QStringList>
#include <QtGlobal>

#include <mutex>

/// Collects the Qt messages of all threads while it lives, instead of printing them. One at a time.
class LogCapture {
public:
    LogCapture() {
        active() = this;
        m_previous = qInstallMessageHandler(&LogCapture::collect);
    }

    ~LogCapture() {
        qInstallMessageHandler(m_previous);
        active() = nullptr;
    }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Each message after its type's letter: D, W, C, F or I, and a colon.
    QStringList messages() const {
        const std::lock_guard lock(m_mutex);
        return m_messages;
    }

    int count(const QString& part) const { return static_cast<int>(messages().filter(part).size()); }

private:
    static LogCapture*& active() {
        static LogCapture* capture = nullptr;
        return capture;
    }

    static void collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
        LogCapture* capture = active();
        if (capture == nullptr)
            return;
        const std::lock_guard lock(capture->m_mutex);
        capture->m_messages.append(QLatin1Char("DWCFI"[type]) + QLatin1String(": ") + message);
    }

    mutable std::mutex m_mutex;
    QStringList m_messages;
    QtMessageHandler m_previous = nullptr;
};
