#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace Stemhaven {
class Task;
class TaskManager;
} // namespace Stemhaven

/// Adds folders to those in which projects are looked for. Asks and reports on top of a window.
class FolderAdder : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object.
    FolderAdder(Stemhaven::TaskManager& tasks, QWidget& window);

    /// Lets the user choose the folder. Does not wait for the choice.
    void choose();

    /// Refuses the root of the file system; does nothing for a folder that is watched already.
    void add(const QString& folder);

signals:
    void folderAdded(const QString& folder);

private:
    void sayWatchedAlready(const QString& folder);
    void insert(const QString& folder, const std::shared_ptr<Stemhaven::Task>& afterTask);

    Stemhaven::TaskManager& m_tasks;
    QWidget& m_window;
};
