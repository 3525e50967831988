// browse_bench NUMBER ROUNDS: what the user does with the selected project and the sidebar in a catalogue of
// that many projects. On a profile filled by many_projects.

#include "ProgramInProcess.h"
#include "Report.h"
#include "ui/details/DetailsPane.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/FolderTreeItemModel.h"
#include "ui/table/StarEditor.h"

#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <chrono>
#include <vector>

namespace {

double median(std::vector<double> seconds) {
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::nth_element(seconds.begin(), middle, seconds.end());
    return *middle;
}

class BrowseBench {
public:
    explicit BrowseBench(ProgramInProcess& program)
        : m_program(program),
          m_details(*program.window().findChild<DetailsPane*>()),
          m_history(*program.window().findChild<EditHistory*>()),
          m_filters(*program.window().findChild<FolderTreeItemModel*>()),
          m_stars(*program.window().findChild<StarEditor*>(QStringLiteral("projectStarEditWidget"))),
          m_name(*program.window().findChild<QLabel*>(QStringLiteral("projectNameLabel"))),
          m_tree(*program.window().findChild<QTreeView*>(QStringLiteral("filterTreeView"))) {
        QObject::connect(&program.model(), &ProjectsTableModel::reloaded, [this] { m_hasNewRows = true; });
        QObject::connect(&m_details, &DetailsPane::projectShown, [this] { m_isShown = true; });
        QObject::connect(&m_history, &EditHistory::written, [this] { m_isWritten = true; });
    }

    /// Until the table shows the rows that it has been asked for.
    void settle() {
        m_hasNewRows = false;
        m_program.runUntil([this](const QObject*, QEvent::Type) { return tableIsPainted(); });
    }

    /// From the key to the details of the next project on the screen.
    double selectNext() {
        m_isShown = false;
        const Stopwatch watch;
        QTest::keyClick(&m_program.table(), Qt::Key_Down);
        m_program.runUntil([this](const QObject* receiver, QEvent::Type type) {
            return receiver == &m_name && type == QEvent::Paint && isUpToDate();
        });
        return watch.seconds();
    }

    /// From the last of many presses of a held key to the details of the project that it stopped at.
    double holdDown(int presses) {
        using namespace std::chrono_literals;
        Stopwatch sinceLast;
        QTimer repeat;
        QObject::connect(&repeat, &QTimer::timeout, [&] {
            QTest::keyPress(&m_program.table(), Qt::Key_Down);
            sinceLast = Stopwatch();
            if (--presses == 0)
                repeat.stop();
        });
        repeat.start(15ms);
        m_program.runUntil([&](const QObject*, QEvent::Type) { return presses == 0 && isUpToDate(); });
        return sinceLast.seconds();
    }

    /// From the click on "All", or on the status that all projects have, to the table that it leaves.
    double clickFilter(FilterType filter) {
        const QModelIndex group = m_filters.indexOf(filter);
        m_tree.expand(group);
        const QModelIndex entry = filter == FilterType::ALL ? group : m_filters.index(0, 0, group);
        m_tree.scrollTo(entry);
        const QPoint place = m_tree.visualRect(entry).center();
        m_hasNewRows = false;
        const Stopwatch watch;
        QTest::mouseClick(m_tree.viewport(), Qt::LeftButton, {}, place);
        m_program.runUntil([this](const QObject* receiver, QEvent::Type type) {
            return receiver == m_program.table().viewport() && type == QEvent::Paint && tableIsPainted();
        });
        return watch.seconds();
    }

    struct EditTimes {
        double database;
        double table;
    };

    /// With the details that they have in common.
    void selectFirst(int count) {
        m_program.table().selectRow(0);
        m_program.table().setFocus();
        m_isShown = false;
        const auto& model = m_program.model();
        m_program.table().selectionModel()->select(
            QItemSelection(model.index(0, 0), model.index(count - 1, 0)),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_program.runUntil(
            [&](const QObject*, QEvent::Type) { return m_isShown && m_details.projects().size() == count; });
    }

    /// From the key to the records of all that are selected, and to the table that shows it.
    EditTimes rate(int stars) {
        m_isWritten = m_hasNewRows = false;
        const Stopwatch watch;
        QTest::keyClick(&m_stars, static_cast<char>('0' + stars));
        EditTimes times{0, 0};
        m_program.runUntil([&](const QObject* receiver, QEvent::Type type) {
            if (m_isWritten && times.database == 0)
                times.database = watch.seconds();
            return m_isWritten && receiver == m_program.table().viewport() && type == QEvent::Paint &&
                tableIsPainted();
        });
        times.table = watch.seconds();
        return times;
    }

private:
    bool isUpToDate() const {
        const QModelIndex current = m_program.table().currentIndex();
        return m_isShown && m_details.project().id == m_program.model().projectIDForRow(current.row());
    }

    bool tableIsPainted() const { return m_hasNewRows && !m_program.model().isReloading(); }

    ProgramInProcess& m_program;
    DetailsPane& m_details;
    EditHistory& m_history;
    FolderTreeItemModel& m_filters;
    StarEditor& m_stars;
    QLabel& m_name;
    QTreeView& m_tree;
    bool m_hasNewRows = false;
    bool m_isShown = false;
    bool m_isWritten = false;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const QString number = QString::fromLatin1(argv[1]);
    const int rounds = QByteArray(argv[2]).toInt();
    ProgramInProcess program(argc, argv);
    BrowseBench bench(program);
    bench.settle();
    if (program.model().rowCount() != number.toInt())
        return 1;
    program.table().setFocus();
    program.table().selectRow(0);
    bench.selectNext();

    std::vector<double> selections;
    std::vector<double> lags;
    std::vector<double> clicks;
    std::vector<double> writes;
    std::vector<double> repaints;
    std::vector<double> manyRepaints;
    constexpr int many = 1000;
    constexpr int actions = 10;
    constexpr int presses = 100;
    for (int round = 0; round < rounds; ++round) {
        program.application().takeLongestStall();
        for (int i = 0; i < actions; ++i)
            selections.push_back(bench.selectNext());
        lags.push_back(bench.holdDown(presses));
        for (int i = 0; i < actions; ++i) {
            const auto times = bench.rate(1 + (round + i) % 5);
            writes.push_back(times.database);
            repaints.push_back(times.table);
        }
        for (int i = 0; i < actions; ++i)
            clicks.push_back(bench.clickFilter(i % 2 == 0 ? FilterType::LYRICS_STATUS : FilterType::ALL));
        report("browse-stall-" + number, program.application().takeLongestStall());
        bench.selectFirst(many);
        program.application().takeLongestStall();
        for (int i = 0; i < actions; ++i)
            manyRepaints.push_back(bench.rate(1 + (round + i) % 5).table);
        report("edit-many-stall-" + number, program.application().takeLongestStall());
        program.table().selectRow(round * presses);
    }
    report("select-" + number, median(selections));
    report("hold-" + number, median(lags));
    report("filter-" + number, median(clicks));
    report("edit-" + number, median(writes));
    report("edit-shown-" + number, median(repaints));
    report("edit-many-shown-" + number, median(manyRepaints));
    return 0;
}
