#include "ui/table/ProjectsPane.h"

#include "WindowFixture.h"
#include "ui/table/SelectionKeeper.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>

namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

class ProjectsPaneTest : public WindowFixture {
protected:
    void clickHeaderOfNames() {
        auto* header = table().horizontalHeader();
        const int x = header->sectionViewportPosition(nameColumn()) + 20;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {x, header->height() / 2});
        settle();
    }

    void refresh() {
        child<ProjectsPane>().reloadProjects(false);
        settle();
    }

    void clickTheButtonThatLeadsOn() {
        QTest::mouseClick(emptyState().findChild<QPushButton*>(), Qt::LeftButton);
        settle();
    }
};

} // namespace

TEST_F(ProjectsPaneTest, SearchNarrowsAsOneTypesIsRememberedAndTakenAsText) {
    insert({"Harbour", "Haven", "Ember"});
    open();
    searchEdit().setFocus();
    QTest::keyClicks(&searchEdit(), "ha");
    settle();
    EXPECT_EQ(names(), (QStringList{"Harbour", "Haven"}));
    EXPECT_EQ(status(), "All projects matching 'ha' (2 found)");
    QTest::keyClick(&searchEdit(), Qt::Key_R);
    settle();
    EXPECT_EQ(names(), QStringList("Harbour"));
    EXPECT_TRUE(searchEdit().hasFocus());

    open();
    EXPECT_EQ(searchEdit().text(), "har");
    EXPECT_EQ(names(), QStringList("Harbour"));
    QTest::keyClick(&searchEdit(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(names().size(), 3);
    EXPECT_EQ(QSettings().value(SettingsKeys::lastSearchTerm), QString());

    const int criticals = log.count("C: ");
    for (const QString term : {"it's", "%3 and %1", "<b>'; --"}) {
        search(term);
        EXPECT_EQ(status(), "All projects matching '" + term + "' (0 found)");
    }
    EXPECT_EQ(log.count("C: "), criticals) << qPrintable(log.messages().join('\n'));
}

TEST_F(ProjectsPaneTest, HeaderClicksSortReverseAndClearForTheNextStart) {
    insert({"b", "C", "a"});
    open();
    EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), -1);

    const std::tuple<QStringList, QString, int, int> clicks[] = {
        {{"a", "b", "C"}, "name", nameColumn(), Qt::AscendingOrder},
        {{"C", "b", "a"}, "name", nameColumn(), Qt::DescendingOrder},
        {{"b", "C", "a"}, QString(), -1, Qt::AscendingOrder}};
    for (const auto& [sorted, name, index, order] : clicks) {
        clickHeaderOfNames();
        EXPECT_EQ(names(), sorted);
        const QSettings settings;
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrderName).toString(), name);
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrderIndex).toInt(), index);
        EXPECT_EQ(settings.value(SettingsKeys::lastSortOrder).toInt(), order);
        open();
        EXPECT_EQ(names(), sorted);
    }

    // Stored ones that cannot be.
    for (const QVariant& index :
         {QVariant(QString()), QVariant("name"), QVariant(-1), QVariant(-7), QVariant(40),
          QVariant(70'000)}) {
        QSettings().setValue(SettingsKeys::lastSortOrderIndex, index);
        open();
        EXPECT_EQ(table().horizontalHeader()->sortIndicatorSection(), -1) << qPrintable(index.toString());
        EXPECT_EQ(names(), std::get<0>(clicks[2]));
    }
}

TEST_F(ProjectsPaneTest, SelectionFollowsTheProjectAndFastTypingQueuesUpNoReloads) {
    insertNumbered(200);
    open();
    auto& selection = child<SelectionKeeper>();
    QSignalSpy changed(&selection, &SelectionKeeper::changed);
    table().selectRow(9);
    EXPECT_EQ(selection.currentProject(), 10);

    search("10");
    EXPECT_EQ(selectedName(), "Song 000010");
    search(QString());
    EXPECT_EQ(selectedName(), "Song 000010");
    clickHeaderOfNames();
    clickHeaderOfNames();
    EXPECT_EQ(table().currentIndex().row(), 190);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
    EXPECT_EQ(changed.count(), 1);

    search("11");
    // It is gone, and the next one takes its place.
    EXPECT_EQ(selectedName(), "Song 000011");
    EXPECT_EQ(selection.currentProject(), 11);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);

    QSignalSpy reloaded(&model(), &ProjectsTableModel::reloaded);
    for (int number = 100; number < 140; ++number)
        searchEdit().setText(QString::number(number));
    settle();
    EXPECT_EQ(names(), QStringList("Song 000139"));
    EXPECT_EQ(reloaded.count(), 2);
}

TEST_F(ProjectsPaneTest, RefreshLeavesRowsWhereTheyAre) {
    insertNumbered(200);
    QSettings().setValue(SettingsKeys::lastSortOrderIndex, 1);
    open();
    table().setFocus();
    table().selectRow(100);
    table().verticalScrollBar()->setValue(100 * table().rowHeight(0) - 77);
    const int top = table().visualRect(table().currentIndex()).top();
    insert({"A first one", "And a second one"});
    refresh();
    EXPECT_EQ(selectedName(), "Song 000101");
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

TEST_F(ProjectsPaneTest, KeysLeadBetweenSearchAndTableAndClicksOnRowsNotYetSeenSelectNothing) {
    insertNumbered(50);
    open();
    table().selectRow(3);
    settle();
    searchEdit().setText("5");
    ASSERT_TRUE(waitForUnseenRows(model()));
    table().selectRow(1);
    EXPECT_EQ(child<SelectionKeeper>().currentProject(), 4);
    settle();
    EXPECT_EQ(selectedName(), "Song 000005");

    search({});
    table().selectionModel()->clear();
    searchEdit().setFocus();
    QTest::keyClick(&searchEdit(), Qt::Key_Down);
    EXPECT_TRUE(table().hasFocus());
    EXPECT_EQ(selectedName(), "Song 000001");
    table().scrollToBottom();
    QTest::keyClick(&table(), Qt::Key_Home);
    EXPECT_EQ(table().verticalScrollBar()->value(), 0);
    QTest::keyClick(&table(), Qt::Key_Delete);
    EXPECT_TRUE(table().hasFocus());
    QTest::keyClicks(&table(), "4");
    settle();
    EXPECT_EQ(searchEdit().text(), "4");
    EXPECT_TRUE(searchEdit().hasFocus());
    table().selectionModel()->clear();
    table().setFocus(Qt::TabFocusReason);
    EXPECT_EQ(selectedName(), "Song 000004");
}

TEST_F(ProjectsPaneTest, EmptyPlacesSayWhyAndLeadOn) {
    using Reason = EmptyState::Reason;
    open();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().reason(), Reason::NoProjects);
    clickTheButtonThatLeadsOn();
    auto* dialog = window->findChild<QFileDialog*>();
    EXPECT_NE(dialog, nullptr);
    delete dialog;
    child<ProjectsPane>().reloadProjects(true);
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::Searching);

    for (const char* values : {"completed=1, ignored=0", "completed=0, ignored=1"}) {
        insert(values, values);
        refresh();
        EXPECT_EQ(emptyState().reason(), Reason::AllHidden) << values;
        database.rows("DELETE FROM projects");
    }
    insert("Done", "completed=1");
    insert("Not wanted", "ignored=1");
    child<ProjectsPane>().reloadProjects(true);
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::Searching);
    refresh();
    clickTheButtonThatLeadsOn();
    EXPECT_EQ(names(), (QStringList{"Done", "Not wanted"}));
    EXPECT_TRUE(table().isVisible());
    EXPECT_FALSE(emptyState().isVisible());

    // A search of the folders shows what it finds while it goes on.
    insert({"Found"});
    ASSERT_TRUE(waitUntil([this] {
        child<ProjectsPane>().showSearching(1);
        return model().rowCount() == 3;
    }));

    // It ends after the last reload, and says no longer that it goes on.
    database.rows("DELETE FROM projects");
    child<ProjectsPane>().reloadProjects(true);
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::Searching);
    child<ProjectsPane>().endSearching();
    settle();
    EXPECT_EQ(emptyState().reason(), Reason::NoProjects);

    search("zither");
    EXPECT_EQ(emptyState().reason(), Reason::NothingFound);
    EXPECT_TRUE(emptyState().isVisible());
    clickTheButtonThatLeadsOn();
    EXPECT_EQ(searchEdit().text(), QString());
    EXPECT_EQ(emptyState().reason(), Reason::NoProjects);
}

TEST_F(ProjectsPaneTest, HiddenProjectsAreCountedAndShownWhereTheyAloneMatch) {
    insert({"Harbour", "Haven", "Ember"});
    insert("Harmony", "completed=1");
    insert("Harp", "completed=1, ignored=1");
    insert("Hidden haze", "ignored=1");
    open();
    EXPECT_EQ(status(), "All projects (3 found) · 3 hidden");
    table().selectRow(0);
    EXPECT_EQ(status(), "All projects (3 found) · 3 hidden");
    table().selectAll();
    EXPECT_EQ(status(), "All projects (3 found) · 3 hidden · 3 selected");
    search("har");
    EXPECT_EQ(status(), "All projects matching 'har' (1 found) · 2 hidden");
    EXPECT_TRUE(table().isVisible());

    search("harm");
    EXPECT_EQ(emptyState().reason(), EmptyState::Reason::MatchesHidden);
    EXPECT_EQ(emptyState().findChildren<QLabel*>().constFirst()->text(), "1 hidden project matches");
    database.rows("DELETE FROM projects WHERE name='Harbour'");
    search("har");
    EXPECT_EQ(emptyState().findChildren<QLabel*>().constFirst()->text(), "2 hidden projects match");
    clickTheButtonThatLeadsOn();
    EXPECT_EQ(names(), (QStringList{"Harmony", "Harp"}));
    EXPECT_EQ(status(), "All projects matching 'har' (2 found)");
    search("harz");
    EXPECT_EQ(emptyState().reason(), EmptyState::Reason::NothingFound);
}

TEST_F(ProjectsPaneTest, ACatalogueThatCannotBeReadSaysSoAndIsTriedAgain) {
    insert({"Alpha"});
    database.rows("ALTER TABLE projects RENAME TO elsewhere");
    open();
    EXPECT_TRUE(emptyState().isVisible());
    EXPECT_EQ(emptyState().reason(), EmptyState::Reason::Unreadable);
    EXPECT_EQ(status(), "The projects could not be loaded. If this stays, start Stemhaven again.");
    database.rows("ALTER TABLE elsewhere RENAME TO projects");
    clickTheButtonThatLeadsOn();
    EXPECT_EQ(names(), QStringList("Alpha"));
    EXPECT_TRUE(table().isVisible());

    // What is there already stays.
    database.rows("ALTER TABLE projects RENAME TO elsewhere");
    refresh();
    EXPECT_EQ(names(), QStringList("Alpha"));
    EXPECT_TRUE(table().isVisible());
    EXPECT_EQ(status(), "The projects could not be loaded. If this stays, start Stemhaven again.");

    // Nor is the table cut off at a value that only another program can have written.
    database.rows("ALTER TABLE elsewhere RENAME TO projects");
    insert({"Beta", "Gamma"});
    refresh();
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(
        outsideRows(
            database.mainPath(),
            {"UPDATE projects SET name='Beta' || hex(zeroblob(9000000)) WHERE name='Beta'"}),
        QStringList());
    refresh();
    EXPECT_EQ(names(), (QStringList{"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(status(), "The projects could not be loaded. If this stays, start Stemhaven again.");
}
