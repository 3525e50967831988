#include "monitor/WatchedFoldersQuery.h"

#include "app/errors/DbException.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/SimpleTask.h"
#include "database/SqlText.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QSqlQuery>
#include <QVariant>

#include <memory>

namespace Stemhaven {

void queryWatchedFolders(
    TaskManager& tasks, const QSet<QString>& knownBundles,
    const std::function<void(const WatchedFolders&)>& done) {
    auto roots = std::make_shared<QueryTask>(RootPathStatements::selectAll(), tasks.rootPathsDatabase());
    roots->setQueryCallback(
        [knownBundles, done](const std::shared_ptr<Task>& task, int rows, QSqlQuery* query) {
            const auto folders = std::make_shared<WatchedFolders>();
            while (query->next())
                folders->addRoot(unescape(query->value(QStringLiteral("root_search_path")).toString()));
            if (rows == 0)
                qCritical() << "Could not retrieve root project search paths!";
            // On the worker, as it looks at the disk for every stray.
            auto ancestors = std::make_shared<SimpleTask>([folders, knownBundles] {
                if (!folders->roots().isEmpty())
                    folders->setAncestors(folders->ancestorsOfStrays(knownBundles));
            });
            ancestors->setSuccessCallback([folders, done](const std::shared_ptr<Task>&) { done(*folders); });
            task->addNextTask(ancestors);
        });
    roots->setSqlErrorCallback([](const std::shared_ptr<Task>&, const DbException& error) {
        qCritical() << "Could not retrieve root project search paths!" << error;
    });
    tasks.addTask(roots);
}

} // namespace Stemhaven
