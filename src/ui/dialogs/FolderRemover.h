#pragma once

#include <QObject>
#include <QString>

namespace Stemhaven {
class TaskManager;
}

/// Takes folders from those in which projects are looked for, after a question. Their projects stay on
/// record. Asks and reports on top of a widget.
class FolderRemover : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    FolderRemover(Stemhaven::TaskManager& tasks, QWidget& window);

    /// folder is written as it is stored. Does not wait for the answer.
    void remove(const QString& folder);

signals:
    void folderRemoved(const QString& folder);

private:
    void removeStored(const QString& folder);

    Stemhaven::TaskManager& m_tasks;
    QWidget& m_window;
};
