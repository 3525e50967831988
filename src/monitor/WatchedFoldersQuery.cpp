#include "monitor/WatchedFoldersQuery.h"

#include "app/Shutdown.h"
#include "app/errors/DbException.h"
#include "app/errors/Guarded.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"

#include <QDebug>
#include <QSqlQuery>
#include <QThreadPool>
#include <QVariant>

namespace Stemhaven {

void queryWatchedFolders(
    TaskManager& tasks, const std::shared_ptr<const RecordedBundles>& recorded,
    const std::function<void(const WatchedFolders&, const StrayBundles&)>& done,
    const std::function<void()>& failed) {
    auto roots = std::make_shared<QueryTask>(RootPathStatements::selectAll(), tasks.rootPathsDatabase());
    roots->setQueryCallback([recorded, done](const std::shared_ptr<Task>&, int rows, QSqlQuery* query) {
        QStringList paths;
        while (query->next())
            paths.append(query->value(QStringLiteral("root_search_path")).toString());
        if (rows == 0)
            qCritical() << "Could not retrieve root project search paths!";
        // On the pool, as it looks at the disk for each root and each stray.
        QThreadPool::globalInstance()->start([paths, recorded, done] {
            loggingFailures(QStringLiteral("Could not retrieve root project search paths!"), [&] {
                WatchedFolders folders;
                for (const auto& path : paths)
                    folders.addRoot(path);
                const auto strays = StrayBundles::find(recorded->all(), folders);
                folders.setAncestors(folders.ancestorsOf(strays.inPlace));
                Shutdown::post([folders, strays, done] { done(folders, strays); });
            });
        });
    });
    roots->setSqlErrorCallback([failed](const std::shared_ptr<Task>&, const DbException& error) {
        logFailure(error) << "Could not retrieve root project search paths!" << error;
        failed();
    });
    tasks.addTask(roots);
}

} // namespace Stemhaven
