#pragma once

#include <QString>
#include <QtGlobal>

#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace Stemhaven {

class Exception;
class DbException;

/// Queues the errors that the user must see and hands them out one after another, in the order of their
/// report.
///
/// Any thread may report; no thread waits for the user. A worker thread takes each error off the queue and
/// gives it to the presenter on the GUI thread.
class ErrorHandler {
public:
    struct ErrorDetails {
        ErrorDetails(QString title, QString message, QtMsgType type);

        /// Whether the alert is of the critical style; it is of the warning style otherwise.
        bool isCritical() const;

        QString title;
        QString message;
        QtMsgType type;
    };

    /// Shows one error without waiting for the user. Called on the GUI thread.
    using Presenter = std::function<void(const ErrorDetails&)>;

    static ErrorHandler& instance();

    ErrorHandler();
    ~ErrorHandler();
    ErrorHandler(const ErrorHandler&) = delete;
    ErrorHandler& operator=(const ErrorHandler&) = delete;

    /// Errors reported before there is a presenter wait for it. One that is already on its way to the GUI
    /// thread still goes to the presenter before.
    void setPresenter(Presenter presenter);

    void reportError(const QString& title, const Exception& error, QtMsgType type);
    void reportError(const QString& title, const DbException& error, QtMsgType type);
    void reportError(const QString& title, const std::exception& error, QtMsgType type);

private:
    void report(ErrorDetails details);
    void presentUntilStopped();

    std::deque<ErrorDetails> m_queue;
    std::mutex m_queueMutex;
    std::mutex m_waitMutex;
    std::condition_variable m_wakeUp;
    Presenter m_presenter;
    bool m_stopping = false;
    std::thread m_worker;
};

} // namespace Stemhaven
