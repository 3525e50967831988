#include "ui/widgets/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace {

constexpr const char* property = "accessibleRole";

QAccessibleInterface* makeWithRole(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const QVariant role = object->property(property);
    if (!widget || !role.isValid())
        return nullptr;
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeWithRole);
        return true;
    }();
    widget.setProperty(property, static_cast<int>(role));
}

void announce(QWidget& widget, const QString& text) {
    if (text == widget.accessibleName())
        return;
    widget.setAccessibleName(text);
    if (text.isEmpty())
        return;
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&widget, text);
#else
    QAccessibleEvent event(&widget, QAccessible::Alert);
#endif
    QAccessible::updateAccessibility(&event);
}
