#include "ui/dialogs/Alert.h"

#include <QCoreApplication>
#include <QLabel>

namespace {

/// A longer message, such as a statement with all its values, would reach beyond the screen.
constexpr int longestMessage = 600;

/// Paths and statements may look like markup, and only the first of the two labels heeds the box's own
/// setting.
void showTextsAsTheyAre(const QMessageBox& box) {
    for (QLabel* label : box.findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
}

} // namespace

QMessageBox*
makeAlert(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& message) {
    auto* box = new QMessageBox(icon, QCoreApplication::applicationName(), title, QMessageBox::Ok, parent);
    const bool isShort = message.size() <= longestMessage;
    box->setInformativeText(isShort ? message : message.left(longestMessage) + QStringLiteral("…"));
    if (!isShort)
        box->setDetailedText(message);
    showTextsAsTheyAre(*box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_QuitOnClose, false);
    return box;
}

QMessageBox* makeQuestion(QWidget* parent, const QString& text, const QString& details) {
    auto* box = new QMessageBox(
        QMessageBox::Question, QCoreApplication::applicationName(), text, QMessageBox::Yes | QMessageBox::No,
        parent);
    box->setInformativeText(details);
    showTextsAsTheyAre(*box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_QuitOnClose, false);
    return box;
}
