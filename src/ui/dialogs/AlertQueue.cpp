#include "ui/dialogs/AlertQueue.h"

#include "ui/dialogs/Alert.h"
#include "ui/dialogs/DatabaseAdvice.h"

#include <QMessageBox>

#include <algorithm>

AlertQueue::AlertQueue(QObject* parent) : QObject(parent) {}

AlertQueue::~AlertQueue() {
    delete m_shown;
}

Stemhaven::ErrorHandler::Presenter AlertQueue::presenter() {
    return [queue = QPointer(this)](const Stemhaven::ErrorHandler::ErrorDetails& details) {
        if (queue)
            queue->add(details);
    };
}

void AlertQueue::add(const Stemhaven::ErrorHandler::ErrorDetails& details) {
    // The same once more says nothing new, and a refused edit is often tried again.
    const auto isSame = [&](const auto& waiting) {
        return waiting.title == details.title && waiting.message == details.message;
    };
    if (std::any_of(m_waiting.begin(), m_waiting.end(), isSame))
        return;
    m_waiting.push_back(details);
    if (!m_shown)
        showNext();
}

void AlertQueue::showNext() {
    if (m_waiting.empty())
        return;
    const auto details = m_waiting.front();
    m_waiting.pop_front();
    const auto icon = details.isCritical() ? QMessageBox::Critical : QMessageBox::Warning;
    const QString advice = databaseAdvice(details.message);
    const QString separator = advice.isEmpty() ? QString() : QStringLiteral("\n\n");
    m_shown = makeAlert(nullptr, icon, details.title, advice + separator + details.message);
    m_shown->setWindowModality(Qt::ApplicationModal);
    connect(m_shown, &QMessageBox::finished, this, [this] {
        m_shown.clear();
        showNext();
    });
    m_shown->show();
}
