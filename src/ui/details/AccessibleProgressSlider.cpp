#include "ui/details/AccessibleProgressSlider.h"

#include "ui/details/ProgressSlider.h"

namespace {

QAccessibleInterface* makeForProgress(const QString& /*className*/, QObject* object) {
    auto* slider = qobject_cast<ProgressSlider*>(object);
    return slider ? new AccessibleProgressSlider(*slider) : nullptr;
}

} // namespace

AccessibleProgressSlider::AccessibleProgressSlider(ProgressSlider& slider)
    : QAccessibleWidget(&slider, QAccessible::Slider) {}

void AccessibleProgressSlider::install() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeForProgress);
        return true;
    }();
}

ProgressSlider& AccessibleProgressSlider::slider() const {
    return *static_cast<ProgressSlider*>(widget());
}

QString AccessibleProgressSlider::text(QAccessible::Text kind) const {
    return kind == QAccessible::Value ? QString::number(slider().value()) : QAccessibleWidget::text(kind);
}

void* AccessibleProgressSlider::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant AccessibleProgressSlider::currentValue() const {
    return slider().value();
}

void AccessibleProgressSlider::setCurrentValue(const QVariant& value) {
    slider().give(qRound(value.toDouble()));
}

QVariant AccessibleProgressSlider::maximumValue() const {
    return slider().maximum();
}

QVariant AccessibleProgressSlider::minimumValue() const {
    return slider().minimum();
}

QVariant AccessibleProgressSlider::minimumStepSize() const {
    return slider().singleStep();
}
