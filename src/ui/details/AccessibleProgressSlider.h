#pragma once

#include <QAccessibleWidget>

class ProgressSlider;

/// Shows the progress to assistive technology. A value set there is an edit as one by key, also the value at
/// which the handle rests where projects differ.
class AccessibleProgressSlider : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleProgressSlider(ProgressSlider& slider);

    /// Lets all such sliders be shown so. Does nothing but once.
    static void install();

    QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    ProgressSlider& slider() const;
};
