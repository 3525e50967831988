#pragma once

#include <QObject>

class FolderAdder;

/// Lets folders be dropped on a window to have projects looked for in them.
class FolderDrop : public QObject {
    Q_OBJECT

public:
    /// adder outlives this object, which the window owns.
    FolderDrop(QWidget& window, FolderAdder& adder);

    /// Lets what is dropped on the window's text fields, which would insert its path, be as dropped on the
    /// window. Goes last, when the fields exist.
    void coverFields();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_window;
    FolderAdder& m_adder;
};
