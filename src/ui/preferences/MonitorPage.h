#pragma once

#include <QWidget>

class QCheckBox;
class WatchedFoldersEditor;

namespace Stemhaven {
class ProjectMonitor;
class TaskManager;
} // namespace Stemhaven

/// Which folders are watched, and whether new projects get the genre that their folder is named after.
class MonitorPage : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the page.
    MonitorPage(Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QWidget* parent = nullptr);

private:
    void foldersEdited();
    void setGenreFromFolder(bool assign);

    Stemhaven::TaskManager& m_tasks;
    Stemhaven::ProjectMonitor& m_monitor;
    WatchedFoldersEditor* m_folders;
    QCheckBox* m_genreFromFolder;
};
