#include "ui/table/ProjectsPane.h"

#include "ProjectsFixture.h"
#include "ui/CurrentFilter.h"
#include "ui/table/EmptyState.h"
#include "ui/table/HeaderSorting.h"
#include "ui/table/KeyEventTableView.h"
#include "ui/table/SearchField.h"
#include "ui/table/SelectionKeeper.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest/QTest>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

class ProjectsPaneTest : public ProjectsFixture {
protected:
    /// A pane as after the program's start, with what the first reload brought.
    void open() {
        close();
        builder.reset(Stemhaven::QueryBuilder::defaultProjectsTableBuilder());
        filter = std::make_unique<CurrentFilter>(*builder);
        pane = std::make_unique<ProjectsPane>(tasks(), *builder, *filter);
        pane->resize(900, 500);
        QSignalSpy loaded(pane.get(), &ProjectsPane::firstLoaded);
        pane->reloadProjects(false);
        pane->show();
        QApplication::setActiveWindow(pane.get());
        ASSERT_TRUE(waitUntil([&] { return loaded.count() == 1; }));
        settle();
    }

    void close() { pane.reset(); }

    void TearDown() override { close(); }

    /// Until nothing is queued or under way any more.
    void settle() {
        do {
            ASSERT_TRUE(waitForReloads(model()));
            database.rows(QStringLiteral("SELECT 1"));
        } while (model().isReloading());
    }

    template <typename Widget>
    Widget& child(const char* name = nullptr) {
        return *pane->findChild<Widget*>(QString::fromLatin1(name));
    }

    ProjectsTableModel& model() { return child<ProjectsTableModel>(); }

    KeyEventTableView& table() { return child<KeyEventTableView>("projectsTableView"); }

    SearchField& searchEdit() { return child<SearchField>("searchEdit"); }

    EmptyState& emptyState() { return child<EmptyState>(); }

    QString status() { return child<QLabel>("statusLabel").text(); }

    int column(const char* field) { return builder->fieldIndexByName(QString::fromLatin1(field)); }

    QStringList names() {
        QStringList shown;
        for (int row = 0; row < model().rowCount(); ++row)
            shown.append(model().index(row, column("name")).data().toString());
        return shown;
    }

    QString selectedName() {
        const auto rows = table().selectionModel()->selectedRows(column("name"));
        return rows.size() == 1 ? rows.constFirst().data().toString() : QString();
    }

    void select(int row) { table().selectRow(row); }

    void clickHeader(const char* field) {
        auto* header = table().horizontalHeader();
        const int x = header->sectionViewportPosition(column(field)) + 20;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {x, header->height() / 2});
        settle();
    }

    void search(const QString& term) {
        searchEdit().setText(term);
        settle();
    }

    void refresh() {
        pane->reloadProjects(false);
        settle();
    }

    std::unique_ptr<Stemhaven::QueryBuilder> builder;
    std::unique_ptr<CurrentFilter> filter;
    std::unique_ptr<ProjectsPane> pane;
};

QStringList list(std::initializer_list<const char*> names) {
    QStringList result;
    for (const char* name : names)
        result.append(QString::fromLatin1(name));
    return result;
}

} // namespace

TEST_F(ProjectsPaneTest, SearchNarrowsAsOneTypesAndIsRemembered) {
    insert(list({"Harbour", "Haven", "Ember"}));
    open();
    EXPECT_EQ(status(), QStringLiteral("All projects (3 found)"));
    searchEdit().setFocus();
    QTest::keyClicks(&searchEdit(), QStringLiteral("ha"));
    settle();
    EXPECT_EQ(names(), list({"Harbour", "Haven"}));
    EXPECT_EQ(status(), QStringLiteral("All projects matching 'ha' (2 found)"));
    QTest::keyClick(&searchEdit(), Qt::Key_R);
    settle();
    EXPECT_EQ(names(), list({"Harbour"}));
    EXPECT_TRUE(searchEdit().hasFocus());

    open();
    EXPECT_EQ(searchEdit().text(), QStringLiteral("har"));
    EXPECT_EQ(names(), list({"Harbour"}));
    QTest::keyClick(&searchEdit(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(QSettings().value(SettingsKeys::lastSearchTerm), QString());
}

TEST_F(ProjectsPaneTest, SearchTermsAreTakenAsText) {
    insert(list({"Harbour"}));
    open();
    const QString terms[] = {QStringLiteral("it's"), QStringLiteral("%3 and %1"), QStringLiteral("<b>'; --")};
    for (const QString& term : terms) {
        search(term);
        EXPECT_EQ(status(), QStringLiteral("All projects matching '") + term + QStringLiteral("' (0 found)"));
    }
    EXPECT_EQ(log.count(QStringLiteral("C: ")), 0) << qPrintable(log.messages().join(u'\n'));
    search(QString());
    EXPECT_EQ(names(), list({"Harbour"}));
}

TEST_F(ProjectsPaneTest, FastTypingQueuesUpNoReloads) {
    insertNumbered(400);
    open();
    QSignalSpy reloaded(&model(), &ProjectsTableModel::reloaded);
    for (int number = 100; number < 140; ++number)
        searchEdit().setText(QString::number(number));
    settle();
    EXPECT_EQ(names(), list({"Song 000139"}));
    EXPECT_EQ(reloaded.count(), 2);
}

TEST_F(ProjectsPaneTest, HeaderClicksSortReverseAndClear) {
    insert(list({"b", "C", "a"}));
    open();
    EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), -1);

    struct Case {
        QStringList names;
        QString name;
        int index;
        int order;
    };

    const int nameColumn = column("name");
    const Case clicks[] = {
        {list({"a", "b", "C"}), QStringLiteral("name"), nameColumn, Qt::AscendingOrder},
        {list({"C", "b", "a"}), QStringLiteral("name"), nameColumn, Qt::DescendingOrder},
        {list({"b", "C", "a"}), QString(), -1, Qt::AscendingOrder}};
    for (const Case& click : clicks) {
        clickHeader("name");
        EXPECT_EQ(names(), click.names);
        const QSettings settings;
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrderName).toString(), click.name);
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrderIndex).toInt(), click.index);
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrder).toInt(), click.order);
        open();
        EXPECT_EQ(names(), click.names);
    }
}

TEST_F(ProjectsPaneTest, StoredSortsThatCannotBeAreIgnored) {
    insert(list({"b", "a"}));
    for (const QVariant& index :
         {QVariant(QString()), QVariant(QStringLiteral("name")), QVariant(-1), QVariant(-7), QVariant(40),
          QVariant(70'000)}) {
        QSettings().setValue(SettingsKeys::lastSortOrderIndex, index);
        open();
        EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), -1) << qPrintable(index.toString());
        EXPECT_EQ(names(), list({"b", "a"}));
    }
}

TEST_F(ProjectsPaneTest, SelectionFollowsTheProject) {
    insertNumbered(200);
    open();
    auto& selection = child<SelectionKeeper>();
    QSignalSpy changed(&selection, &SelectionKeeper::changed);
    select(9);
    EXPECT_EQ(selection.currentProject(), 10);

    search(QStringLiteral("10"));
    EXPECT_EQ(selectedName(), QStringLiteral("Song 000010"));
    search(QString());
    EXPECT_EQ(selectedName(), QStringLiteral("Song 000010"));
    clickHeader("name");
    clickHeader("name");
    EXPECT_EQ(table().currentIndex().row(), 190);
    EXPECT_TRUE(table().viewport()->rect().contains(table().visualRect(table().currentIndex())));
    EXPECT_EQ(changed.count(), 1);

    search(QStringLiteral("11"));
    EXPECT_EQ(selectedName(), QString());
    EXPECT_EQ(selection.currentProject(), -1);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
}

TEST_F(ProjectsPaneTest, RefreshLeavesRowsWhereTheyAre) {
    insertNumbered(200);
    QSettings().setValue(SettingsKeys::lastSortOrderIndex, 1);
    open();
    table().setFocus();
    select(100);
    table().verticalScrollBar()->setValue(100 * table().rowHeight(0) - 77);
    const int top = table().visualRect(table().currentIndex()).top();
    insert(list({"A first one", "And a second one"}));
    refresh();
    EXPECT_EQ(selectedName(), QStringLiteral("Song 000101"));
    EXPECT_EQ(table().visualRect(table().currentIndex()).top(), top);
    EXPECT_TRUE(table().hasFocus());

    // Without a selection, and with one that is out of sight, the bar alone counts.
    table().verticalScrollBar()->setValue(1000);
    refresh();
    EXPECT_EQ(table().verticalScrollBar()->value(), 1000);
    table().selectionModel()->clear();
    table().verticalScrollBar()->setValue(1500);
    refresh();
    EXPECT_EQ(table().verticalScrollBar()->value(), 1500);
}

TEST_F(ProjectsPaneTest, ClicksOnRowsNotYetSeenSelectNothing) {
    insertNumbered(50);
    open();
    select(3);
    builder->search(QStringLiteral("5"));
    pane->reloadProjects(false);
    const QDeadlineTimer deadline(60'000);
    while (!model().hasUnannouncedRows() && !deadline.hasExpired())
        QThread::usleep(200);
    select(1);
    EXPECT_EQ(child<SelectionKeeper>().currentProject(), 4);
    settle();
    EXPECT_EQ(selectedName(), QString());
}

TEST_F(ProjectsPaneTest, KeysLeadBetweenSearchAndTable) {
    insertNumbered(50);
    open();
    searchEdit().setFocus();
    QTest::keyClick(&searchEdit(), Qt::Key_Down);
    EXPECT_TRUE(table().hasFocus());
    EXPECT_EQ(selectedName(), QStringLiteral("Song 000001"));
    table().scrollToBottom();
    QTest::keyClick(&table(), Qt::Key_Home);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
    QTest::keyClick(&table(), Qt::Key_Delete);
    EXPECT_TRUE(table().hasFocus());
    QTest::keyClicks(&table(), QStringLiteral("4"));
    settle();
    EXPECT_EQ(searchEdit().text(), QStringLiteral("4"));
    EXPECT_TRUE(searchEdit().hasFocus());
    EXPECT_EQ(selectedName(), QString());
    table().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(selectedName(), QStringLiteral("Song 000004"));
}

TEST_F(ProjectsPaneTest, EmptyPlacesSayWhyAndLeadOn) {
    using Reason = EmptyState::Reason;
    open();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().reason(), Reason::NoProjects);
    QSignalSpy addFolder(pane.get(), &ProjectsPane::addFolderRequested);
    QTest::mouseClick(&child<QPushButton>(), Qt::LeftButton);
    EXPECT_EQ(addFolder.count(), 1);
    pane->reloadProjects(true);
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::Searching);

    for (const char* values : {"completed=1, ignored=0", "completed=0, ignored=1"}) {
        insert(QString::fromLatin1(values), QString::fromLatin1(values));
        refresh();
        EXPECT_EQ(emptyState().reason(), Reason::AllHidden) << values;
        database.rows(QStringLiteral("DELETE FROM projects"));
    }
    insert(QStringLiteral("Done"), QStringLiteral("completed=1"));
    insert(QStringLiteral("Not wanted"), QStringLiteral("ignored=1"));
    pane->reloadProjects(true);
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::Searching);
    refresh();
    QObject::connect(pane.get(), &ProjectsPane::showHiddenRequested, pane.get(), [this] {
        builder->hideCompletedTracks(false);
        builder->hideIgnoredTracks(false);
        pane->queryChanged();
    });
    QTest::mouseClick(&child<QPushButton>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(names(), list({"Done", "Not wanted"}));
    EXPECT_TRUE(table().isVisible());
    EXPECT_FALSE(emptyState().isVisible());

    search(QStringLiteral("zither"));
    EXPECT_EQ(emptyState().reason(), Reason::NothingFound);
    EXPECT_TRUE(emptyState().isVisible());
    QTest::mouseClick(&child<QPushButton>(), Qt::LeftButton);
    settle();
    EXPECT_EQ(searchEdit().text(), QString());
    EXPECT_TRUE(table().isVisible());
}

TEST_F(ProjectsPaneTest, ColumnsFitAndNamesTakeTheRest) {
    insert(QStringLiteral("x"), QStringLiteral("name='%1'").arg(QString(300, u'M')));
    open();
    auto* header = table().horizontalHeader();
    EXPECT_EQ(header->sectionSize(column("name")), 240);
    pane->resize(2000, 500);
    QApplication::processEvents();
    EXPECT_EQ(header->length(), table().viewport()->width());
    EXPECT_GT(header->sectionSize(column("name")), 400);
    for (int i = 0; i < header->count(); ++i)
        EXPECT_GE(header->sectionSize(i), header->sectionSizeHint(i)) << i;
}
