#include "ui/dialogs/FolderRemover.h"

#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"
#include "ui/dialogs/Alert.h"

#include <QDebug>
#include <QDir>
#include <QPointer>
#include <QWidget>

using Stemhaven::DbException;
using Stemhaven::QueryTask;

FolderRemover::FolderRemover(Stemhaven::TaskManager& tasks, QWidget& window)
    : QObject(&window),
      m_tasks(tasks),
      m_window(window) {}

void FolderRemover::remove(const QString& folder) {
    Stemhaven::guarded(tr("Could not remove folder"), [&] {
        auto* question = makeQuestion(
            &m_window,
            tr("Do you want Stemhaven to stop looking for projects in %1?")
                .arg(QDir::toNativeSeparators(folder)),
            tr("Stemhaven will keep any projects that have been found so far. New projects in this folder "
               "won't be added automatically!"));
        connect(question, &QMessageBox::finished, this, [this, folder](int answer) {
            if (answer == QMessageBox::Yes)
                Stemhaven::guarded(tr("Could not remove folder"), [&] { removeStored(folder); });
        });
        question->open();
    });
}

void FolderRemover::removeStored(const QString& folder) {
    auto task = std::make_shared<QueryTask>(
        Stemhaven::RootPathStatements::remove(folder), m_tasks.rootPathsDatabase());
    task->setSuccessCallback([remover = QPointer(this), folder](const auto& /*self*/) {
        qInfo().noquote() << "Root search path removed: " << folder;
        if (remover)
            emit remover->folderRemoved(folder);
    });
    task->setSqlErrorCallback([folder](const auto& /*self*/, const DbException& error) {
        qCritical().noquote() << "Could not delete root search path '" + folder << error;
        Stemhaven::ErrorHandler::instance().reportError(
            tr("Could not remove folder to watch"), error, QtCriticalMsg);
    });
    m_tasks.addTask(std::move(task));
}
