#pragma once

#include <QObject>

class FolderAdder;

/// Lets folders be dropped on a window to have projects looked for in them.
class FolderDrop : public QObject {
    Q_OBJECT

public:
    /// adder outlives this object, which the window owns.
    FolderDrop(QWidget& window, FolderAdder& adder);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FolderAdder& m_adder;
};
