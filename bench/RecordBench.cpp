// record_bench ROOT: records bundles of the library below ROOT, one after another.

#include "BenchProcess.h"
#include "Report.h"
#include "app/Paths.h"
#include "app/errors/DbException.h"
#include "database/TaskManager.h"
#include "monitor/FolderWalk.h"
#include "project/ProjectDetails.h"

using Stemhaven::TaskManager;

namespace {

constexpr qsizetype mostRecords = 500;

QStringList bundlesBelow(const QString& root) {
    QStringList bundles;
    const Stemhaven::FolderWalk walk(
        {[&](const QString& bundle) { bundles.append(bundle); }, [](const QString&, const QString&) {},
         [&] {
             return bundles.size() == mostRecords;
         }});
    walk.walk(root);
    return bundles;
}

void addProjects(TaskManager& tasks, QStringList bundles) {
    if (bundles.isEmpty()) {
        QCoreApplication::quit();
        return;
    }
    const QString bundle = bundles.takeFirst();
    const Stopwatch watch;
    tasks.addProject(
        Stemhaven::ProjectDetails(bundle), {},
        [&tasks, bundles, watch](const auto&, long long) {
            report("record", watch.seconds());
            addProjects(tasks, bundles);
        },
        [](const auto& error) { fail(error.what()); });
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    nameProgram();
    const QCoreApplication application(argc, argv);
    TaskManager tasks(Stemhaven::mainDatabasePath(), Stemhaven::rootPathsDatabasePath());
    addProjects(tasks, bundlesBelow(QString::fromLocal8Bit(argv[1])));
    failLater(&application);
    return QCoreApplication::exec();
}
