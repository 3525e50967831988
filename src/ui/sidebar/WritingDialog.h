#pragma once

#include <QDialog>

/// A dialog that frees itself when it has been closed, though not before what it writes has been written:
/// whoever listens to its signals hears of every write, also of one during which the user closed it.
class WritingDialog : public QDialog {
    Q_OBJECT

public:
    explicit WritingDialog(QWidget* parent);

protected:
    bool isWriting() const { return m_isWriting; }

    void beginWriting();
    /// Closes the dialog after a write that succeeded.
    void endWriting(bool succeeded);

    /// Lets the user change nothing while a write is under way.
    virtual void showWriting(bool writing) = 0;

private:
    bool m_isWriting = false;
    bool m_isClosed = false;
};
