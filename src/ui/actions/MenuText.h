#pragma once

#include <QString>

/// A name as the text of a menu's entry: on one line and not too long; a "&" in it is one, and a tab does not
/// set a shortcut apart.
QString menuText(const QString& name);
