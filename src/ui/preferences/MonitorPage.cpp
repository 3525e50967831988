#include "ui/preferences/MonitorPage.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "ui/dialogs/Alert.h"
#include "ui/folders/WatchedFoldersEditor.h"
#include "ui/widgets/PageHeading.h"

#include <QCheckBox>
#include <QDebug>
#include <QSettings>
#include <QVBoxLayout>

using Stemhaven::guarded;
namespace SettingsKeys = Stemhaven::SettingsKeys;

MonitorPage::MonitorPage(Stemhaven::TaskManager& tasks, Stemhaven::ProjectMonitor& monitor, QWidget* parent)
    : QWidget(parent),
      m_tasks(tasks),
      m_monitor(monitor),
      m_folders(new WatchedFoldersEditor(
          tasks, monitor,
          {tr("Could not load project folders to watch"), tr("Could not load project folders to watch"),
           tr("Could not add folder"), tr("Selecting monitored root search path failed."),
           QStringLiteral("addMonitoredPathButton"), QStringLiteral("removeMonitoredPathButton")})),
      // The blank keeps the text clear of the box.
      m_genreFromFolder(new QCheckBox(tr(" Assign Genre based on Directory"))) {
    m_genreFromFolder->setObjectName(QStringLiteral("genreFromDirCheck"));
    m_genreFromFolder->setChecked(QSettings().value(SettingsKeys::genreFromDir).toBool());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new PageHeading(
        tr("Monitor"),
        tr("Add the folders where your Logic projects are. Stemhaven will monitor these to automatically "
           "find new projects and look for changes.")));
    layout->addWidget(m_folders, 1);
    layout->addWidget(m_genreFromFolder);
    setFocusProxy(m_folders);
    connect(m_folders, &WatchedFoldersEditor::edited, this, &MonitorPage::foldersEdited);
    connect(m_genreFromFolder, &QCheckBox::toggled, this, &MonitorPage::setGenreFromFolder);
}

void MonitorPage::foldersEdited() {
    guarded(tr("Restarting project monitor failed."), [this] {
        m_monitor.requestUpdateWatchedDirs();
        m_monitor.restartMonitoring();
    });
}

void MonitorPage::setGenreFromFolder(bool assign) {
    guarded(tr("Could not save setting to assign genre based on the folder name"), [&] {
        QSettings().setValue(SettingsKeys::genreFromDir, assign);
        if (!assign)
            return;
        auto* question = makeQuestion(
            this,
            tr("New projects found will have their genre automatically set to their directory. Do you want "
               "Stemhaven to for this for all projects it found before?"),
            tr("New genres are named the same as the directories. For example, ~/Logic/Pop/MySong.logicx "
               "creates the genre 'Pop'. If you've already assigned a genre then this won't change it."));
        connect(question, &QMessageBox::finished, this, [this](int answer) {
            if (answer != QMessageBox::Yes)
                return;
            qInfo() << "Performing retroactive genre assignment based on directory name...";
            m_tasks.retroactivelyAssignGenreByDir();
        });
        question->open();
    });
}
