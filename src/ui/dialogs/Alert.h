#pragma once

#include <QMessageBox>

/// A message with an OK button, not shown yet. It frees itself when it is dismissed, and its closing never
/// counts as that of the program's last window. Both texts are shown as they are,
/// a long message behind a button.
QMessageBox* makeAlert(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& message);

/// A question with Yes and No, not shown yet, that frees itself as above. Both texts are shown as they are.
/// Escape is a No.
QMessageBox* makeQuestion(QWidget* parent, const QString& text, const QString& details);
