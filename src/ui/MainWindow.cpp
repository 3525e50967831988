#include "ui/MainWindow.h"

#include "app/SettingsKeys.h"
#include "app/errors/Guarded.h"
#include "database/QueryBuilder.h"
#include "database/TaskManager.h"
#include "monitor/ProjectMonitor.h"
#include "project/BundleSuffixes.h"
#include "ui/dialogs/FolderAdder.h"
#include "ui/table/ProjectsPane.h"

#include <QAction>
#include <QDebug>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QSettings>

using Stemhaven::guarded;
using Stemhaven::ProjectMonitor;
using Stemhaven::TaskManager;

namespace {

constexpr QSize initialSize{1400, 820};
constexpr QSize smallestSize{560, 400};

/// The local folders among what is dragged; a project bundle, though a folder, is none to look for projects
/// in.
QStringList foldersIn(const QMimeData* data) {
    QStringList folders;
    for (const QUrl& url : data->urls()) {
        const QString path = url.toLocalFile();
        if (!path.isEmpty() && QFileInfo(path).isDir() && !Stemhaven::isBundlePath(path))
            folders.append(path);
    }
    return folders;
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : MainWindow(TaskManager::instance(), ProjectMonitor::instance(), parent) {}

MainWindow::MainWindow(TaskManager& tasks, ProjectMonitor& monitor, QWidget* parent)
    : QMainWindow(parent),
      m_monitor(monitor),
      m_builder(Stemhaven::QueryBuilder::defaultProjectsTableBuilder()),
      m_projects(std::make_unique<ProjectsPane>(tasks, *m_builder)),
      m_folders(new FolderAdder(tasks, *this)) {
    setWindowTitle(QStringLiteral("Stemhaven"));
    setCentralWidget(m_projects.get());
    setMinimumSize(smallestSize);
    setAcceptDrops(true);
    setupActions();
    setupEvents();
    reloadProjects();
    restoreState();
    m_projects->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::setupActions() {
    auto* search = new QAction(tr("Search"), this);
    search->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
    connect(search, &QAction::triggered, this, [this] {
        guarded(tr("Focusing on search failed."), [this] { m_projects->focusSearch(); });
    });
    addAction(search);
}

void MainWindow::setupEvents() {
    connect(m_projects.get(), &ProjectsPane::firstLoaded, this, &MainWindow::firstLoaded);
    connect(m_projects.get(), &ProjectsPane::addFolderRequested, m_folders, &FolderAdder::choose);
    connect(m_folders, &FolderAdder::folderAdded, this, &MainWindow::lookIntoNewFolder);

    connect(&m_monitor, &ProjectMonitor::databaseInitialized, this, &MainWindow::reloadProjects);
    connect(&m_monitor, &ProjectMonitor::projectsDbModified, this, &MainWindow::reloadProjects);
    connect(&m_monitor, &ProjectMonitor::wasStarted, this, &MainWindow::reloadProjects);
    connect(&m_monitor, &ProjectMonitor::searchProgressed, m_projects.get(), &ProjectsPane::showSearching);
    connect(&m_monitor, &ProjectMonitor::searchEnded, m_projects.get(), &ProjectsPane::endSearching);
}

void MainWindow::reloadProjects() {
    m_projects->reloadProjects(m_monitor.isSearching());
}

void MainWindow::lookIntoNewFolder() {
    guarded(tr("Restarting project monitor failed."), [this] {
        m_monitor.requestUpdateWatchedDirs();
        m_monitor.restartMonitoring();
        reloadProjects();
    });
}

void MainWindow::restoreState() {
    qInfo() << "Restoring window state...";
    if (!restoreGeometry(QSettings().value(Stemhaven::SettingsKeys::windowGeo).toByteArray()))
        resize(initialSize);
}

void MainWindow::storeState() {
    QSettings().setValue(Stemhaven::SettingsKeys::windowGeo, saveGeometry());
    m_projects->storeState();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    storeState();
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!foldersIn(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    for (const QString& folder : foldersIn(event->mimeData()))
        m_folders->add(folder);
    event->acceptProposedAction();
}
