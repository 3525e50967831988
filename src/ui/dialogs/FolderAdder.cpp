#include "ui/dialogs/FolderAdder.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"
#include "ui/dialogs/Alert.h"

#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QPointer>
#include <QStandardPaths>

namespace RootPathStatements = Stemhaven::RootPathStatements;
using Stemhaven::DbException;
using Stemhaven::QueryTask;
using Stemhaven::Task;

FolderAdder::FolderAdder(Stemhaven::TaskManager& tasks, QWidget& window)
    : QObject(&window),
      m_tasks(tasks),
      m_window(window) {}

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
    Stemhaven::guarded(tr("Could not add folder"), [&] {
        const QString path = QDir::cleanPath(QDir(folder).absolutePath());
        if (QDir(path).isRoot()) {
            makeAlert(
                &m_window, QMessageBox::Warning, tr("Root monitoring is not allowed."),
                tr("Please choose a folder that contains your project files."))
                ->open();
            return;
        }

        auto task =
            std::make_shared<QueryTask>(RootPathStatements::select(path), m_tasks.rootPathsDatabase());
        task->setQueryCallback(
            [adder = QPointer(this), path](const auto& self, int rowCount, auto* /*query*/) {
                if (rowCount > 0)
                    qInfo().noquote() << "Root search path '" + path + " is already being monitored.";
                if (adder && rowCount > 0)
                    adder->sayWatchedAlready(path);
                else if (adder)
                    adder->insert(path, self);
            });
        task->setSqlErrorCallback([](const auto& /*self*/, const DbException& error) {
            qCritical() << "Could not add root search path: " << error;
            Stemhaven::ErrorHandler::instance().reportError(tr("Could not add folder"), error, QtCriticalMsg);
        });
        m_tasks.addTask(std::move(task));
    });
}

void FolderAdder::sayWatchedAlready(const QString& folder) {
    makeAlert(
        &m_window, QMessageBox::Information, tr("This folder is watched already."),
        QDir::toNativeSeparators(folder))
        ->open();
}

void FolderAdder::insert(const QString& folder, const std::shared_ptr<Task>& afterTask) {
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
    afterTask->addNextTask(std::move(task));
}
