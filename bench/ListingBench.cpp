// listing_bench NUMBER ROUNDS: the table's rows, from the statement to the filled model, and the same
// statement in the sqlite3 shell. On a profile filled by many_projects.

#include "BenchProcess.h"
#include "Report.h"
#include "app/Paths.h"
#include "app/errors/Exception.h"
#include "database/QueryBuilder.h"
#include "database/SqlQueryModelTask.h"
#include "database/TaskManager.h"

#include <QEventLoop>
#include <QProcess>
#include <QSqlQueryModel>

using Stemhaven::SqlQueryModelTask;
using Stemhaven::TaskManager;

namespace {

// So that the start of the shell counts for little.
constexpr int repetitions = 10;

double timeToFill(TaskManager& tasks, const QString& statement, const SqlQueryModelTask::ModelSlot& slot) {
    static std::recursive_mutex modelMutex;
    QEventLoop loop;
    const Stopwatch watch;
    auto task = std::make_shared<SqlQueryModelTask>(statement, modelMutex, slot, tasks.mainDatabase());
    task->setSuccessCallback([&](const auto&) { loop.quit(); });
    task->setErrorCallback([](const auto&, const auto& error) { fail(error.what()); });
    tasks.addTask(task);
    loop.exec();
    return watch.seconds();
}

double timeInShell(const QString& statement) {
    QProcess shell;
    shell.setStandardOutputFile(QProcess::nullDevice());
    const QString statements = (statement + QLatin1String(";\n")).repeated(repetitions);
    const Stopwatch watch;
    shell.start(QStringLiteral("sqlite3"), {Stemhaven::mainDatabasePath(), statements});
    shell.waitForFinished(-1);
    if (shell.exitCode() != 0 || shell.error() != QProcess::UnknownError)
        fail("The sqlite3 shell failed.");
    return watch.seconds() / repetitions;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const int rounds = QByteArray(argv[2]).toInt();
    const QString name = QStringLiteral("listing-") + QString::fromLatin1(argv[1]);
    nameProgram();
    const QCoreApplication application(argc, argv);
    const std::unique_ptr<Stemhaven::QueryBuilder> builder(
        Stemhaven::QueryBuilder::defaultProjectsTableBuilder());
    const QString statement = builder->select();
    TaskManager tasks(Stemhaven::mainDatabasePath(), Stemhaven::rootPathsDatabasePath());
    const SqlQueryModelTask::ModelSlot slot(new QSqlQueryModel*(new QSqlQueryModel));

    timeToFill(tasks, statement, slot);
    for (int round = 0; round < rounds; ++round) {
        double seconds = 0;
        for (int i = 0; i < repetitions; ++i)
            seconds += timeToFill(tasks, statement, slot);
        report(name, seconds / repetitions);
        report(name + "-shell", timeInShell(statement));
    }
    return 0;
}
