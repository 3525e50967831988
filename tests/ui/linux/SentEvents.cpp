#include "SentEvents.h"

namespace {

SentEvents*& instance() {
    static SentEvents* events = nullptr;
    return events;
}

} // namespace

SentEvents::SentEvents(std::function<void()> onEvent) : m_onEvent(std::move(onEvent)) {
    instance() = this;
}

SentEvents::~SentEvents() {
    instance() = nullptr;
}

SentEvents* SentEvents::active() {
    return instance();
}

QStringList SentEvents::names(QAccessible::Event type) const {
    QStringList found;
    for (const auto& [sent, name] : m_events) {
        if (sent == type)
            found.append(name);
    }
    return found;
}

void SentEvents::take(QAccessibleEvent& event) {
    // The library's own first step: a table forgets the cells that it gave out.
    auto* interface = event.accessibleInterface();
    if (event.type() == QAccessible::TableModelChanged && interface && interface->tableInterface())
        interface->tableInterface()->modelChange(static_cast<QAccessibleTableModelChangeEvent*>(&event));
    m_events.append({event.type(), interface ? interface->text(QAccessible::Name) : QString()});
    if (m_onEvent)
        m_onEvent();
}

bool QAccessible::isActive() {
    return SentEvents::active() != nullptr;
}

void QAccessible::updateAccessibility(QAccessibleEvent* event) {
    if (SentEvents::active())
        SentEvents::active()->take(*event);
}
