// follow_bench CASE ROOT [NUMBER | FOLDER]: how the running program follows what happens to a library that it
// has recorded. On the profile that recorded it.
//
// storm   one project is saved 200 times a second for ten seconds.
// burst   NUMBER projects are saved at once.
// drop    a library that lies at FOLDER is moved into the root, and one project of the root is saved behind
// it; meanwhile the user goes from project to project.
// rescan  a search for new projects, of which there are none.
// replay  NUMBER projects were saved while the program did not run: from its start until they are recorded.

#include "ProgramInProcess.h"
#include "ProjectSaving.h"
#include "Report.h"
#include "app/Paths.h"
#include "ui/details/DetailsPane.h"

#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <algorithm>
#include <functional>
#include <thread>
#include <vector>

using namespace std::chrono_literals;
using Stemhaven::ProjectMonitor;

namespace {

/// One that no project has.
double newTempo() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    return 1000 + static_cast<double>(seconds % 100000);
}

void saveAll(std::vector<ProjectSaving>& projects, double tempo) {
    for (auto& project : projects)
        project.save(tempo);
}

/// Looks into the database on a thread and a connection of its own until so many projects have the tempo.
class RecordWatch {
public:
    RecordWatch(double tempo, std::size_t number) : m_thread([this, tempo, number] { run(tempo, number); }) {}

    ~RecordWatch() { m_thread.join(); }

    RecordWatch(const RecordWatch&) = delete;
    RecordWatch& operator=(const RecordWatch&) = delete;

    bool isComplete() const { return m_complete; }

private:
    void run(double tempo, std::size_t number) {
        const QString name = QStringLiteral("watch");
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(Stemhaven::mainDatabasePath());
        database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (!database.open())
            fail("The database cannot be read.");
        while (recorded(database, tempo) != number)
            std::this_thread::sleep_for(20ms);
        m_complete = true;
    }

    static std::size_t recorded(const QSqlDatabase& database, double tempo) {
        QSqlQuery query(database);
        query.prepare(QStringLiteral("SELECT count(*) FROM projects WHERE bpm = ?"));
        query.addBindValue(tempo);
        return query.exec() && query.next() ? query.value(0).toUInt() : 0;
    }

    std::atomic<bool> m_complete = false;
    std::thread m_thread; // last: it uses the others
};

class FollowBench {
public:
    FollowBench(int& argc, char** argv) : m_program(argc, argv) {
        QObject::connect(&ProjectMonitor::instance(), &ProjectMonitor::projectsDbModified, [this] {
            ++m_updates;
            m_sinceNotice = Stopwatch();
        });
        QObject::connect(&ProjectMonitor::instance(), &ProjectMonitor::searchEnded, [this] { ++m_searches; });
    }

    /// What happened while the program did not run is looked into, and the table is there.
    void comeToRest() {
        waitUntil([this] {
            return m_searches > 0 && !ProjectMonitor::instance().isSearching() &&
                ProjectMonitor::isRunning() && m_program.model().rowCount() > 0 &&
                !m_program.model().isReloading();
        });
        m_program.application().takeLongestStall();
        m_updates = 0;
        m_searches = 0;
    }

    void storm(ProjectSaving& project) {
        constexpr int saves = 2000;
        const double last = newTempo();
        std::thread writer([&] {
            auto next = std::chrono::steady_clock::now();
            for (int i = 1; i <= saves; ++i) {
                project.save(i == saves ? last : 10 + i);
                std::this_thread::sleep_until(next += 5ms);
            }
        });
        waitForRecords(last, 1);
        writer.join();
        report(QStringLiteral("storm-updates"), m_updates, "1");
        report(QStringLiteral("storm-stall"), m_program.application().takeLongestStall());
    }

    void burst(std::vector<ProjectSaving>& projects) {
        const double tempo = newTempo();
        const Stopwatch watch;
        std::thread writer([&] { saveAll(projects, tempo); });
        waitForRecords(tempo, projects.size());
        report(QStringLiteral("burst"), watch.seconds());
        writer.join();
        report(QStringLiteral("burst-stall"), m_program.application().takeLongestStall());
    }

    void drop(ProjectSaving& project, const QString& library, const QString& root) {
        // The drop is told promptly; the save, which comes behind it, a latency later.
        constexpr double batchDue = 0.1 + 3;
        const double tempo = newTempo();
        if (!QDir().rename(library, root + QStringLiteral("/Dropped")))
            fail("The library cannot be moved into the root.");
        const Stopwatch sinceDrop;
        waitUntil([&] { return sinceDrop.seconds() >= 0.5; });
        const Stopwatch sinceSave;
        project.save(tempo);
        waitForRecords(tempo, 1);
        report(QStringLiteral("drop-save"), sinceSave.seconds());
        report(QStringLiteral("drop-save-batch"), sinceDrop.seconds() - batchDue);
        report(QStringLiteral("drop-stall"), m_program.application().takeLongestStall());
        selectDuring([this, rows = m_program.model().rowCount()] {
            return m_sinceNotice.seconds() > quiet && m_program.model().rowCount() > rows;
        });
    }

    void rescan() {
        const Stopwatch watch;
        ProjectMonitor::instance().searchForProjects(false);
        waitUntil([this] { return m_searches > 0; });
        report(QStringLiteral("rescan"), watch.seconds());
        report(QStringLiteral("rescan-stall"), m_program.application().takeLongestStall());
    }

    void replay(const Stopwatch& watch, double tempo, std::size_t number) {
        const RecordWatch records(tempo, number);
        waitUntil([&] { return records.isComplete() && m_searches > 0; });
        const QString name = QStringLiteral("replay-%1").arg(number);
        report(name, watch.seconds());
        report(name + "-stall", m_program.application().takeLongestStall());
        report(name + "-updates", m_updates, "1");
    }

private:
    static constexpr double quiet = 2; // seconds

    /// From a key to the details of the next project, again and again until what is written comes to its end.
    void selectDuring(const std::function<bool()>& isEnd) {
        auto& details = *m_program.window().findChild<DetailsPane*>();
        auto& table = m_program.table();
        std::vector<double> seconds;
        std::size_t counted = 0;
        const auto counting =
            QObject::connect(&ProjectMonitor::instance(), &ProjectMonitor::projectsDbModified, [&] {
                counted = seconds.size();
            });
        table.setFocus();
        table.selectRow(0);
        while (!isEnd()) {
            table.selectRow((table.currentIndex().row() + 1) % m_program.model().rowCount());
            const Stopwatch watch;
            waitUntil([&] {
                return details.project().isValid() &&
                    details.project().id == m_program.model().projectIDForRow(table.currentIndex().row());
            });
            seconds.push_back(watch.seconds());
            const Stopwatch pause;
            waitUntil([&] { return pause.seconds() > 0.05; });
        }
        QObject::disconnect(counting);
        // Those behind the last notice met nothing that was being written.
        seconds.resize(counted);
        if (seconds.empty())
            fail("Nothing was written meanwhile.");
        std::sort(seconds.begin(), seconds.end());
        report(QStringLiteral("drop-select"), seconds[seconds.size() / 2]);
        report(QStringLiteral("drop-select-slowest"), seconds.back());
    }

    void waitForRecords(double tempo, std::size_t number) {
        const RecordWatch records(tempo, number);
        waitUntil([&] { return records.isComplete(); });
    }

    static void waitUntil(const std::function<bool()>& condition) {
        QEventLoop loop;
        failLater(&loop);
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
            if (condition())
                loop.quit();
        });
        timer.start(5ms);
        loop.exec();
    }

    ProgramInProcess m_program;
    Stopwatch m_sinceNotice;
    int m_updates = 0;
    int m_searches = 0;
};

void replay(int& argc, char** argv, std::vector<ProjectSaving> projects) {
    const double tempo = newTempo();
    saveAll(projects, tempo);
    const Stopwatch watch;
    FollowBench bench(argc, argv);
    bench.replay(watch, tempo, projects.size());
}

void follow(int& argc, char** argv, const QString& what, std::vector<ProjectSaving> projects) {
    FollowBench bench(argc, argv);
    bench.comeToRest();
    if (what == QLatin1String("storm"))
        bench.storm(projects.front());
    else if (what == QLatin1String("burst"))
        bench.burst(projects);
    else if (what == QLatin1String("drop"))
        bench.drop(projects.front(), QString::fromLocal8Bit(argv[3]), QString::fromLocal8Bit(argv[2]));
    else
        bench.rescan();
}

} // namespace

int main(int argc, char** argv) {
    const QString what = QString::fromLatin1(argc > 1 ? argv[1] : "");
    const bool isDrop = what == QLatin1String("drop");
    if (argc < (isDrop ? 4 : 3))
        return 2;
    const auto number = argc > 3 && !isDrop ? QByteArray(argv[3]).toUInt() : 1;
    auto projects = projectsToSave(QString::fromLocal8Bit(argv[2]), number);
    if (what == QLatin1String("replay"))
        replay(argc, argv, std::move(projects));
    else
        follow(argc, argv, what, std::move(projects));
    return 0;
}
