// table_bench NUMBER ROUNDS: what the user does in a table of that many projects, until it is painted anew.
// On a profile filled by many_projects.

#include "ProgramInProcess.h"
#include "Report.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTest>

#include <vector>

namespace {

struct Action {
    std::function<void()> perform;
    std::vector<double> seconds;
};

/// A word typed and taken back.
std::vector<Action> keystrokes(QLineEdit& search) {
    const QByteArray word("night");
    std::vector<Action> actions;
    for (const char letter : word)
        actions.push_back({[&search, letter] { QTest::keyClick(&search, letter); }, {}});
    for (qsizetype i = 0; i < word.size(); ++i)
        actions.push_back({[&search] { QTest::keyClick(&search, Qt::Key_Backspace); }, {}});
    return actions;
}

/// Three clicks on each header: up, down and not sorted.
std::vector<Action> sorts(QHeaderView& header) {
    std::vector<Action> actions;
    for (int column = 0; column < header.count(); ++column) {
        const auto click = [&header, column] {
            const QPoint place(header.sectionViewportPosition(column) + 12, header.height() / 2);
            QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
        };
        actions.insert(actions.end(), 3, {click, {}});
    }
    return actions;
}

class TableBench {
public:
    explicit TableBench(ProgramInProcess& program) : m_program(program) {
        QObject::connect(&program.model(), &ProjectsTableModel::reloaded, [this] { m_hasNewRows = true; });
    }

    /// Until the end of the first painting that shows the rows which the action brings.
    void time(Action& action) {
        m_hasNewRows = false;
        const Stopwatch watch;
        action.perform();
        m_program.runUntil([this](const QObject* receiver, QEvent::Type type) {
            return receiver == m_program.table().viewport() && type == QEvent::Paint && m_hasNewRows &&
                !m_program.model().isReloading();
        });
        action.seconds.push_back(watch.seconds());
    }

private:
    ProgramInProcess& m_program;
    bool m_hasNewRows = false;
};

/// By the median of each action, so that what else the machine does at times is left out.
double slowest(std::vector<Action>& actions) {
    double result = 0;
    for (auto& action : actions) {
        const auto middle = action.seconds.begin() + static_cast<std::ptrdiff_t>(action.seconds.size() / 2);
        std::nth_element(action.seconds.begin(), middle, action.seconds.end());
        result = std::max(result, *middle);
    }
    return result;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const QString number = QString::fromLatin1(argv[1]);
    const int rounds = QByteArray(argv[2]).toInt();
    ProgramInProcess program(argc, argv);
    TableBench bench(program);
    Action start{[] {}, {}};
    bench.time(start);
    if (program.model().rowCount() != number.toInt())
        return 1;

    auto keys = keystrokes(*program.window().findChild<QLineEdit*>(QStringLiteral("searchEdit")));
    auto clicks = sorts(*program.table().horizontalHeader());
    for (int round = 0; round < rounds; ++round) {
        program.application().takeLongestStall();
        for (auto& key : keys)
            bench.time(key);
        for (auto& click : clicks)
            bench.time(click);
        report("table-stall-" + number, program.application().takeLongestStall());
    }
    report("keystroke-" + number, slowest(keys));
    report("sort-" + number, slowest(clicks));
    return 0;
}
