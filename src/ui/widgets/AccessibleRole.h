#pragma once

#include <QAccessible>

class QWidget;

/// Gives a widget another role for assistive technology than that of its class. What such a label shows it
/// has to say by announce(). GUI thread, before assistive technology asks for the widget.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// Makes a text the widget's accessible name and lets a screen reader say it, wherever the focus is. Does
/// nothing for the name that the widget has.
void announce(QWidget& widget, const QString& text);
