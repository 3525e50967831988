#include "ui/dialogs/Alert.h"

#include <QCoreApplication>
#include <QLabel>

QMessageBox*
makeAlert(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& message) {
    auto* box = new QMessageBox(icon, QCoreApplication::applicationName(), title, QMessageBox::Ok, parent);
    box->setInformativeText(message);
    // Paths and statements may look like markup, and only the first of the two labels heeds the box's own
    // setting.
    for (QLabel* label : box->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_QuitOnClose, false);
    return box;
}
