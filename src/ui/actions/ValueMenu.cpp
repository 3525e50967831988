#include "ui/actions/ValueMenu.h"

#include <QStyleOptionMenuItem>

QAction* ValueMenu::addValue(const QString& text, qint64 value) {
    QAction* action = addAction(text);
    action->setCheckable(true);
    action->setData(value);
    m_texts[action] = text;
    mark(*action);
    connect(action, &QAction::triggered, this, [this, action, value] {
        // The mark follows the records, once they have changed.
        mark(*action);
        emit chosen(value);
    });
    return action;
}

void ValueMenu::removeValues() {
    clear();
    m_texts.clear();
}

void ValueMenu::setPresent(const QSet<qint64>& values) {
    if (m_present == values)
        return;
    m_present = values;
    const auto all = actions();
    for (QAction* action : all)
        mark(*action);
}

bool ValueMenu::haveSome(const QAction& action) const {
    return m_present.size() > 1 && m_present.contains(action.data().toLongLong());
}

void ValueMenu::mark(QAction& action) const {
    const QString& text = m_texts[&action];
    // In words, too, for whoever cannot see the mark.
    action.setText(haveSome(action) ? tr("%1 (some)").arg(text) : text);
    action.setChecked(m_present.size() == 1 && m_present.contains(action.data().toLongLong()));
}

void ValueMenu::initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const {
    QMenu::initStyleOption(option, action);
    if (action && haveSome(*action)) {
        option->checked = true;
        option->state |= QStyle::State_NoChange;
    }
}
