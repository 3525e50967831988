#pragma once

#include <QMessageBox>

/// A message with an OK button, not shown yet. It frees itself when it is dismissed, and its closing never
/// counts as that of the program's last window. Both texts are shown as they are,
/// a long message behind a button.
QMessageBox* makeAlert(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& message);
