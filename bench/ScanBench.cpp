// scan_bench ROOT NUMBER: the first search of a folder with that many bundles, while the window is open. On
// an empty profile.

#include "ProgramInProcess.h"
#include "Report.h"
#include "database/QueryTask.h"
#include "database/RootPathStatements.h"
#include "database/TaskManager.h"

using Stemhaven::ProjectMonitor;
using Stemhaven::QueryTask;
using Stemhaven::TaskManager;

namespace {

void showEmptyTable(ProgramInProcess& program) {
    bool loaded = false;
    QObject::connect(&program.window(), &MainWindow::firstLoaded, [&] { loaded = true; });
    program.runUntil([&](const QObject*, QEvent::Type type) { return loaded && type == QEvent::Paint; });
}

void addRoot(const QString& path) {
    auto& tasks = TaskManager::instance();
    auto task =
        std::make_shared<QueryTask>(Stemhaven::RootPathStatements::insert(path), tasks.rootPathsDatabase());
    task->setSuccessCallback([](const auto&) { ProjectMonitor::instance().updateWatchedDirs(false); });
    tasks.addTask(task);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const QString root = QString::fromLocal8Bit(argv[1]);
    const int number = QString::fromLatin1(argv[2]).toInt();
    const QString name = QStringLiteral("scan-%1").arg(number);
    ProgramInProcess program(argc, argv);
    showEmptyTable(program);

    const Stopwatch watch;
    double seconds = 0;
    QObject::connect(
        &ProjectMonitor::instance(), &ProjectMonitor::projectsDbModified, [&] { seconds = watch.seconds(); });
    program.application().takeLongestStall();
    addRoot(root);
    const auto* viewport = program.table().viewport();
    program.runUntil([&](const QObject* receiver, QEvent::Type type) {
        return receiver == viewport && type == QEvent::Paint && program.model().rowCount() == number;
    });
    report(name + "-stall", program.application().takeLongestStall());
    report(name, seconds);
    report(name + "-bundle", seconds / number);
    return 0;
}
