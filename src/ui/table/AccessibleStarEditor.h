#pragma once

#include <QAccessibleWidget>

class StarEditor;

/// Shows a star editor to assistive technology as a slider from no star to all. A value set there is an edit
/// as one by key.
class AccessibleStarEditor : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessibleStarEditor(StarEditor& editor);

    /// Lets all star editors be shown so. Does nothing but once.
    static void install();

    QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    StarEditor& editor() const;
};
