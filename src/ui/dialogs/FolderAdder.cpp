#include "ui/dialogs/FolderAdder.h"

#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"
#include "platform/RemoteCalls.h"
#include "ui/dialogs/Alert.h"

#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>
#include <QThreadPool>

namespace RootPathStatements = Stemhaven::RootPathStatements;
using Stemhaven::DbException;
using Stemhaven::QueryTask;
using Stemhaven::RemoteCalls;
using Stemhaven::Task;

FolderAdder::FolderAdder(Stemhaven::TaskManager& tasks, QWidget& window, const QString& failureTitle)
    : QObject(&window),
      m_tasks(tasks),
      m_window(window),
      m_failureTitle(failureTitle.isEmpty() ? tr("Could not add folder") : failureTitle) {}

void FolderAdder::choose() {
    auto* dialog = new QFileDialog(
        &m_window, tr("Add Folder"), QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    connect(dialog, &QFileDialog::fileSelected, this, &FolderAdder::add);
    dialog->open();
}

void FolderAdder::add(const QString& folder) {
    Stemhaven::guarded(m_failureTitle, [&] {
        const QString path = QDir::cleanPath(QDir(folder).absolutePath());
        if (QDir(path).isRoot()) {
            refuseRoot();
            return;
        }
        // Where links lead is looked up on the pool, as the disk may be slow.
        QThreadPool::globalInstance()->start([adder = QPointer(this), path] {
            const auto canonical =
                RemoteCalls::run(path, [path] { return QFileInfo(path).canonicalFilePath(); });
            const bool isRoot = canonical && !canonical->isEmpty() && QDir(*canonical).isRoot();
            Stemhaven::Shutdown::post([adder, path, isRoot] {
                if (adder && isRoot)
                    adder->refuseRoot();
                else if (adder)
                    adder->addUnlessKnown(path);
            });
        });
    });
}

void FolderAdder::refuseRoot() {
    makeAlert(
        &m_window, QMessageBox::Warning, tr("Root monitoring is not allowed."),
        tr("Please choose a folder that contains your project files."))
        ->open();
}

/// Looks for both ways of writing a path, since others than this program may have stored it.
void FolderAdder::addUnlessKnown(const QString& folder) {
    m_tasks.addTask(lookUp(folder, folder, [this, folder](Task& task) {
        task.addNextTask(
            lookUp(folder, folder + QLatin1Char('/'), [this, folder](Task& last) { insert(folder, last); }));
    }));
}

std::shared_ptr<Task>
FolderAdder::lookUp(const QString& folder, const QString& storedAs, const TaskFollower& whenUnknown) {
    auto task =
        std::make_shared<QueryTask>(RootPathStatements::select(storedAs), m_tasks.rootPathsDatabase());
    task->setQueryCallback(
        [adder = QPointer(this), folder, whenUnknown](const auto& self, int rowCount, auto* /*query*/) {
            if (rowCount > 0)
                qInfo().noquote() << "Root search path '" + folder + " is already being monitored.";
            if (adder && rowCount > 0)
                adder->sayWatchedAlready(folder);
            else if (adder)
                whenUnknown(*self);
        });
    task->setSqlErrorCallback([title = m_failureTitle](const auto& /*self*/, const DbException& error) {
        qCritical() << "Could not add root search path: " << error;
        Stemhaven::ErrorHandler::instance().reportError(title, error, QtCriticalMsg);
    });
    return task;
}

void FolderAdder::sayWatchedAlready(const QString& folder) {
    makeAlert(
        &m_window, QMessageBox::Information, tr("This folder is watched already."),
        QDir::toNativeSeparators(folder))
        ->open();
}

void FolderAdder::insert(const QString& folder, Task& afterTask) {
    auto task = std::make_shared<QueryTask>(RootPathStatements::insert(folder), m_tasks.rootPathsDatabase());
    task->setSuccessCallback([adder = QPointer(this), folder](const auto& /*self*/) {
        qInfo().noquote() << "New root search path added: " << folder;
        if (adder)
            emit adder->folderAdded(folder);
    });
    task->setSqlErrorCallback([](const auto& /*self*/, const DbException& error) {
        qCritical() << "Could not insert new root search path: " << error;
        Stemhaven::ErrorHandler::instance().reportError(
            tr("Could not add new folder to watch"), error, QtCriticalMsg);
    });
    afterTask.addNextTask(std::move(task));
}
