#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace Stemhaven {
class Task;
class TaskManager;
} // namespace Stemhaven

/// Adds folders to those in which projects are looked for. Asks and reports on top of a widget.
class FolderAdder : public QObject {
    Q_OBJECT

public:
    /// Both outlive this object. failureTitle is what a failure is reported under where nothing else says
    /// more of it; empty for the usual one.
    FolderAdder(Stemhaven::TaskManager& tasks, QWidget& window, const QString& failureTitle = {});

    /// Lets the user choose the folder. Does not wait for the choice.
    void choose();

    /// Refuses the root of the file system, also by another name, and says so of a folder that is watched
    /// already. Does not wait.
    void add(const QString& folder);

signals:
    void folderAdded(const QString& folder);

private:
    using TaskFollower = std::function<void(Stemhaven::Task& task)>;

    void refuseRoot();
    void addUnlessKnown(const QString& folder);
    std::shared_ptr<Stemhaven::Task>
    lookUp(const QString& folder, const QString& storedAs, const TaskFollower& whenUnknown);
    void sayWatchedAlready(const QString& folder);
    void insert(const QString& folder, Stemhaven::Task& afterTask);

    Stemhaven::TaskManager& m_tasks;
    QWidget& m_window;
    const QString m_failureTitle;
};
