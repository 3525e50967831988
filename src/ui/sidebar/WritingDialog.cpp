#include "ui/sidebar/WritingDialog.h"

WritingDialog::WritingDialog(QWidget* parent) : QDialog(parent) {
    connect(this, &QDialog::finished, this, [this] {
        m_isClosed = true;
        if (!m_isWriting)
            deleteLater();
    });
}

void WritingDialog::beginWriting() {
    m_isWriting = true;
    showWriting(true);
}

void WritingDialog::endWriting(bool succeeded) {
    m_isWriting = false;
    if (m_isClosed)
        deleteLater();
    else if (succeeded)
        QDialog::accept();
    else
        showWriting(false);
}
