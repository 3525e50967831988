// record_bench ROOT: records bundles of the library below ROOT, one after another.

#include "BenchProcess.h"
#include "Report.h"
#include "app/Paths.h"
#include "app/errors/DbException.h"
#include "database/TaskManager.h"
#include "platform/TreeWalk.h"
#include "project/BundleSuffixes.h"
#include "project/ProjectDetails.h"

#include <QFile>

using Stemhaven::TaskManager;

namespace {

constexpr qsizetype mostRecords = 500;

QStringList bundlesBelow(const QString& root) {
    QStringList bundles;
    Stemhaven::TreeWalk walk;
    walk.onBundle = [&](const std::string& bundle) {
        bundles.append(QFile::decodeName(bundle.c_str()));
    };
    walk.isStopped = [&] {
        return bundles.size() == mostRecords;
    };
    walk.walk(QFile::encodeName(root).toStdString(), Stemhaven::BundleNames(Stemhaven::bundleSuffixes()));
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
