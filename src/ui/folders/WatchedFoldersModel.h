#pragma once

#include "monitor/ProjectMonitor.h"
#include "ui/SpacedCall.h"

#include <QAbstractListModel>
#include <QList>
#include <QStringList>
#include <QTimer>

#include <memory>

namespace Stemhaven {
class DbException;
class Task;
class TaskManager;
} // namespace Stemhaven

/// The folders in which projects are looked for, each with how it is looked after and how many projects it
/// has, live. GUI thread.
class WatchedFoldersModel : public QAbstractListModel {
    Q_OBJECT

public:
    using State = Stemhaven::ProjectMonitor::FolderState;

    enum Role : int {
        PathRole = Qt::UserRole, ///< as it is stored
        StateRole,               ///< int, a State
        DetailsRole,             ///< the state and the number of projects in words
        ProjectsRole             ///< int, -1 where it is not known
    };

    /// Both outlive the model. Empty until the first reload.
    WatchedFoldersModel(
        Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QObject* parent = nullptr);

    /// Reads the folders and counts their projects. Does not wait.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    QStringList paths() const;

signals:
    /// The folders have been read.
    void loaded();
    void loadingFailed(const Stemhaven::DbException& error);

private:
    struct Folder {
        QString path;
        State state = State::Waiting;
        int projects = -1;
    };

    void take(const QStringList& paths);
    void count();
    void takeCounts(const QStringList& paths, const QList<int>& counts);
    void updateStates();
    QString details(const Folder& folder) const;

    Stemhaven::TaskManager& m_tasks;
    Stemhaven::ProjectMonitor& m_monitor;
    QList<Folder> m_folders;
    SpacedCall m_counts;
    QTimer m_stateTimer;
};
