#include "app/errors/ErrorHandler.h"

#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/Exception.h"

#include <utility>

namespace Stemhaven {

namespace {

template <typename Error>
QString debugText(const Error& error) {
    QString text;
    QDebug(&text) << error;
    // QDebug puts a blank after every item and takes the last one back only where it writes a message.
    if (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace

ErrorHandler::ErrorDetails::ErrorDetails(QString theTitle, QString theMessage, QtMsgType theType)
    : title(std::move(theTitle)),
      message(std::move(theMessage)),
      type(theType) {}

bool ErrorHandler::ErrorDetails::isCritical() const {
    return type == QtCriticalMsg || type == QtFatalMsg;
}

ErrorHandler& ErrorHandler::instance() {
    static ErrorHandler handler;
    return handler;
}

ErrorHandler::ErrorHandler() : m_worker([this] { presentUntilStopped(); }) {}

ErrorHandler::~ErrorHandler() {
    {
        const std::lock_guard wait(m_waitMutex);
        m_stopping = true;
        m_wakeUp.notify_all();
    }
    m_worker.join();
}

void ErrorHandler::setPresenter(Presenter presenter) {
    const std::lock_guard wait(m_waitMutex);
    m_presenter = std::move(presenter);
    m_wakeUp.notify_all();
}

void ErrorHandler::reportError(const QString& title, const Exception& error, QtMsgType type) {
    report(ErrorDetails(title, debugText(error), type));
}

void ErrorHandler::reportError(const QString& title, const DbException& error, QtMsgType type) {
    report(ErrorDetails(title, debugText(error), type));
}

void ErrorHandler::reportError(const QString& title, const std::exception& error, QtMsgType type) {
    report(ErrorDetails(title, QString::fromUtf8(error.what()), type));
}

void ErrorHandler::report(ErrorDetails details) {
    {
        const std::lock_guard queue(m_queueMutex);
        m_queue.push_back(std::move(details));
    }
    // Under the wait mutex, or the wake-up is lost on a worker between its look at the queue and its sleep.
    const std::lock_guard wait(m_waitMutex);
    m_wakeUp.notify_all();
}

void ErrorHandler::presentUntilStopped() {
    const auto hasWork = [this] {
        const std::lock_guard queue(m_queueMutex);
        return m_presenter && !m_queue.empty();
    };
    const auto takeFront = [this] {
        const std::lock_guard queue(m_queueMutex);
        ErrorDetails front = std::move(m_queue.front());
        m_queue.pop_front();
        return front;
    };

    for (;;) {
        std::unique_lock wait(m_waitMutex);
        m_wakeUp.wait(wait, [&] { return m_stopping || hasWork(); });
        if (m_stopping)
            return;
        const Presenter present = m_presenter;
        wait.unlock();

        Shutdown::post([present, details = takeFront()] { present(details); });
    }
}

} // namespace Stemhaven
