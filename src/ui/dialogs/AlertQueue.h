#pragma once

#include "app/errors/ErrorHandler.h"

#include <QObject>
#include <QPointer>

#include <deque>

class QMessageBox;

/// Shows errors one after another, the next when the user has dismissed the one before. Nothing waits for the
/// user, and dismissing an alert never ends the program. GUI thread.
class AlertQueue : public QObject {
    Q_OBJECT

public:
    explicit AlertQueue(QObject* parent = nullptr);
    /// Closes the alert that is shown and drops the others.
    ~AlertQueue() override;
    Q_DISABLE_COPY(AlertQueue)

    void add(const Stemhaven::ErrorHandler::ErrorDetails& details);

    /// For the error handler. Does nothing once this queue is gone.
    Stemhaven::ErrorHandler::Presenter presenter();

private:
    void showNext();

    std::deque<Stemhaven::ErrorHandler::ErrorDetails> m_waiting;
    QPointer<QMessageBox> m_shown;
};
