#include "ui/table/AccessibleStarEditor.h"

#include "ui/table/StarEditor.h"

namespace {

QAccessibleInterface* makeForStars(const QString& /*className*/, QObject* object) {
    auto* editor = qobject_cast<StarEditor*>(object);
    return editor ? new AccessibleStarEditor(*editor) : nullptr;
}

} // namespace

AccessibleStarEditor::AccessibleStarEditor(StarEditor& editor)
    : QAccessibleWidget(&editor, QAccessible::Slider) {}

void AccessibleStarEditor::install() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeForStars);
        return true;
    }();
}

StarEditor& AccessibleStarEditor::editor() const {
    return *static_cast<StarEditor*>(widget());
}

QString AccessibleStarEditor::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Value)
        return QAccessibleWidget::text(kind);
    return StarRating(editor().committedCount()).accessibleText();
}

void* AccessibleStarEditor::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant AccessibleStarEditor::currentValue() const {
    return editor().committedCount();
}

void AccessibleStarEditor::setCurrentValue(const QVariant& value) {
    editor().give(qRound(value.toDouble()));
}

QVariant AccessibleStarEditor::maximumValue() const {
    return editor().starRating().maxStarCount();
}

QVariant AccessibleStarEditor::minimumValue() const {
    return 0;
}

QVariant AccessibleStarEditor::minimumStepSize() const {
    return 1;
}
